#pragma once
// The tests' servers for a test on Windows: they run in the process that started the test, on the system that
// lends its network (tests/support/remote/server_host.cpp). Not the servers.

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/http_request.h"
#include "tests/support/icy_script.h"
#include "tests/support/remote/messages.h"

namespace test_support {

/// One server there; it ends with this object. Every member throws std::runtime_error when that fails there.
class RemoteServer {
 public:
  explicit RemoteServer(const Message& request);
  ~RemoteServer();
  RemoteServer(const RemoteServer&) = delete;
  RemoteServer& operator=(const RemoteServer&) = delete;

 protected:
  /// Asks `name` of this server; the answer's fields.
  [[nodiscard]] Message Ask(const std::string& name, const Message& arguments = {}) const;
  /// The fields of the answer to its making, after the server's number.
  [[nodiscard]] const Message& Made() const { return made_; }

 private:
  Message made_;
  std::string number_;
};

/// As ScriptedIcyServer.
class RemoteIcyServer : public RemoteServer {
 public:
  using milliseconds = std::chrono::milliseconds;
  using Request = HttpRequest;
  enum class Welcome { kReadRequest, kClose, kReset, kSilence };

  RemoteIcyServer();
  void On(const std::string& target, const Script& script);
  void OnAny(const Script& script);
  void SetWelcome(Welcome welcome);
  [[nodiscard]] std::uint16_t Port() const { return port_; }
  [[nodiscard]] std::string Url(std::string_view target = "/") const;
  [[nodiscard]] std::vector<Request> Requests() const;
  [[nodiscard]] int Connections() const;
  [[nodiscard]] int OpenConnections() const;
  [[nodiscard]] std::uint64_t BytesSent() const;
  void Signal(const std::string& name);
  [[nodiscard]] bool WaitForRequests(std::size_t count, milliseconds deadline) const;
  [[nodiscard]] bool WaitForConnections(int count, milliseconds deadline) const;
  [[nodiscard]] bool WaitForAllClosed(milliseconds deadline) const;

 private:
  std::uint16_t port_;
};

/// As IcecastServer, fed with a tone.
class RemoteIcecastServer : public RemoteServer {
 public:
  static constexpr const char* kStationName = "Testsender";
  RemoteIcecastServer() : RemoteServer({"new icecast"}) {}
  /// The address of the mount, which is heard when this returns.
  std::string FeedTone(const std::string& mount);
  void SetTitle(const std::string& mount, const std::string& title);
};

/// As TlsFront.
class RemoteTlsFront : public RemoteServer {
 public:
  enum class Certificate : std::uint8_t { kSelfSigned, kExpired, kOtherName };
  explicit RemoteTlsFront(std::uint16_t plain_port, Certificate certificate = Certificate::kSelfSigned);
  [[nodiscard]] std::string Url(std::string_view target = "/") const;
  /// What to trust, in PEM form.
  [[nodiscard]] const std::string& TrustedPem() const { return Made().at(1); }
};

}  // namespace test_support
