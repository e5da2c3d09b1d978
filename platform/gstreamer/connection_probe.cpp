#include "platform/gstreamer/connection_probe.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace platform::gstreamer {
namespace {

constexpr std::uint16_t kHttpPort = 80;
constexpr std::uint16_t kHttpsPort = 443;

/// What one attempt sees of the server's certificate.
struct Handshake {
  GObjectPointer<GTlsDatabase> trusted;  ///< none: the system's
  std::optional<GTlsCertificateFlags> refused;
};

gboolean OnCertificate(GTlsConnection*, GTlsCertificate*, GTlsCertificateFlags flags, gpointer handshake) {
  static_cast<Handshake*>(handshake)->refused = flags;
  return FALSE;
}

void OnConnectionEvent(GSocketClient*, GSocketClientEvent event, GSocketConnectable*, GIOStream* connection,
                       gpointer data) {
  if (event != G_SOCKET_CLIENT_TLS_HANDSHAKING) return;
  auto* handshake = static_cast<Handshake*>(data);
  if (handshake->trusted) {
    g_tls_connection_set_database(G_TLS_CONNECTION(connection), handshake->trusted.get());
  }
  g_signal_connect(connection, "accept-certificate", G_CALLBACK(OnCertificate), handshake);
}

PlaybackFailure FailureOfError(const GError& error) {
  const auto is = [&error](GIOErrorEnum code) { return g_error_matches(&error, G_IO_ERROR, code) != FALSE; };
  if (error.domain == G_RESOLVER_ERROR || is(G_IO_ERROR_HOST_NOT_FOUND)) return PlaybackFailure::kUnknownHost;
  if (error.domain == G_TLS_ERROR) return PlaybackFailure::kNoSecureConnection;
  if (is(G_IO_ERROR_CONNECTION_REFUSED)) return PlaybackFailure::kRefused;
  if (is(G_IO_ERROR_INVALID_ARGUMENT)) return PlaybackFailure::kBadAddress;
  if (is(G_IO_ERROR_CONNECTION_CLOSED)) return PlaybackFailure::kHungUp;
  return PlaybackFailure::kNoAnswer;
}

/// Nothing when it was cancelled.
std::optional<PlaybackFailure> Probe(const ProbeTarget& target, GCancellable& cancellable) {
  const bool secure = g_ascii_strncasecmp(target.address.c_str(), "https:", 6) == 0;
  Handshake handshake;
  if (!target.certificate_file.empty()) {
    handshake.trusted.reset(g_tls_file_database_new(target.certificate_file.c_str(), nullptr));
  }
  const GObjectPointer<GSocketClient> client(g_socket_client_new());
  g_socket_client_set_tls(client.get(), secure ? TRUE : FALSE);
  g_signal_connect(client.get(), "event", G_CALLBACK(OnConnectionEvent), &handshake);
  GError* raw = nullptr;
  const GObjectPointer<GSocketConnection> connection(g_socket_client_connect_to_uri(
      client.get(), target.address.c_str(), secure ? kHttpsPort : kHttpPort, &cancellable, &raw));
  const GErrorPointer error(raw);
  if (g_cancellable_is_cancelled(&cancellable) != 0) return std::nullopt;
  if (handshake.refused) return FailureOfCertificate(*handshake.refused);
  return error ? FailureOfError(*error) : PlaybackFailure::kHungUp;
}

}  // namespace

void ConnectionProbe::Start(ProbeTarget target, Done done) {
  const std::lock_guard lock(mutex_);
  if (std::exchange(used_, true)) return;
  thread_ =
      std::thread([target = std::move(target), done = std::move(done), cancellable = cancellable_.get()] {
        if (const auto failure = Probe(target, *cancellable)) done(*failure);
      });
}

void ConnectionProbe::Cancel() {
  std::thread ending;
  {
    const std::lock_guard lock(mutex_);
    used_ = true;
    ending = std::move(thread_);
  }
  if (!ending.joinable()) return;
  g_cancellable_cancel(cancellable_.get());
  ending.join();
}

PlaybackFailure FailureOfCertificate(GTlsCertificateFlags flags) {
  // What an unknown issuer says about dates and names says nothing.
  if ((flags & G_TLS_CERTIFICATE_UNKNOWN_CA) != 0) return PlaybackFailure::kCertificateUnknownIssuer;
  if ((flags & G_TLS_CERTIFICATE_EXPIRED) != 0) return PlaybackFailure::kCertificateExpired;
  if ((flags & G_TLS_CERTIFICATE_NOT_ACTIVATED) != 0) return PlaybackFailure::kCertificateNotYetValid;
  if ((flags & G_TLS_CERTIFICATE_BAD_IDENTITY) != 0) return PlaybackFailure::kCertificateOtherName;
  return PlaybackFailure::kNoSecureConnection;
}

}  // namespace platform::gstreamer
