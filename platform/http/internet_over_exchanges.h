#pragma once
// The internet library's operations over whatever carries single exchanges: handles, waiting, reading.
// Not for playlists fetched in the background, and not the library that carries.

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "platform/http/exchange.h"
#include "ports/internet.h"
#include "ports/message_loop.h"
#include "ports/text_conversion.h"

namespace platform::http {

/// The time limits of the internet operations. A session's own limit (SetWaitLimit) makes the first three
/// shorter, never longer.
struct InternetSettings {
  milliseconds connect_limit{10'000};  ///< name look-up, connecting, TLS; for each hop of a redirect
  milliseconds answer_limit{10'000};   ///< a connected server that does not get its header out; each hop
  milliseconds whole_limit{30'000};    ///< all of it, redirects included
  milliseconds read_slice{20};         ///< the longest wait of one InternetReadFile
  /// InternetReadFile fills the whole buffer (32 KiB of it when it is larger). Only when the server has
  /// ended, or when nothing has come for this long, it gives less; until then it brings nothing.
  milliseconds quiet_before_short_read{500};
};

/// A request carries the lines "Host", "User-Agent" (the session's agent), the caller's header lines as
/// they came, and with the reload flag "Cache-Control: no-cache" (RFC 9111, section 5.2.1.4). Nothing is
/// kept between requests: no cache, no cookies, no open connections.
class InternetOverExchanges : public Internet {
 public:
  /// `loop` is used only to paint and to ask whether input ends the wait, in every slice of at most 10 ms of
  /// a wait for an answer.
  InternetOverExchanges(MessageLoop& loop, TextConversion& conversion, const InternetSettings& settings,
                        MakeExchange make_exchange);
  ~InternetOverExchanges() override;
  InternetOverExchanges(const InternetOverExchanges&) = delete;
  InternetOverExchanges& operator=(const InternetOverExchanges&) = delete;

  InternetHandle InternetOpenW(const Text& agent, std::uint32_t access_type) override;
  bool SetWaitLimit(InternetHandle session, std::uint32_t limit) override;
  InternetHandle InternetConnectW(InternetHandle session, const Text& host, std::uint16_t port,
                                  std::uint32_t service) override;
  InternetHandle HttpOpenRequestW(InternetHandle connection, const Text& verb, const Text& path,
                                  const Text& version, std::uint32_t flags) override;
  bool HttpSendRequestW(InternetHandle request, const Text& headers) override;
  bool HttpQueryInfoW(InternetHandle request, std::uint32_t info_level, std::span<std::byte> buffer,
                      std::uint32_t& size) override;
  InternetHandle InternetOpenUrlW(InternetHandle session, const Text& url, const Text& headers,
                                  std::uint32_t flags) override;
  InternetRead InternetReadFile(InternetHandle request, std::span<std::byte> buffer) override;
  bool InternetCloseHandle(InternetHandle handle) override;
  [[nodiscard]] InternetFailure LastFailure() const override { return last_failure_; }

 private:
  enum class Kind { kSession, kConnection, kRequest };
  struct Node {
    Kind kind = Kind::kSession;
    std::string agent;
    milliseconds wait_limit{0};  // the session's, or the settings'
    Text host;                   // of a connection
    std::uint16_t port = 0;      // of a connection
    std::string address;         // of a request
    std::uint32_t flags = 0;     // of a request
    std::unique_ptr<Exchange> exchange;
  };

  InternetHandle Keep(Node node);
  Node* Find(InternetHandle handle, Kind kind);
  bool Send(Node& request, const Text& headers);
  InternetFailure AwaitAnswer(Exchange& exchange, milliseconds limit);

  MessageLoop& loop_;
  TextConversion& conversion_;
  const InternetSettings settings_;
  const MakeExchange make_exchange_;
  std::map<InternetHandle, Node> nodes_;
  std::uint32_t last_handle_ = 0;
  InternetFailure last_failure_ = InternetFailure::kNone;
};

}  // namespace platform::http
