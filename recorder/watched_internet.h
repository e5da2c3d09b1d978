#pragma once
// The internet port with a watcher: what servers answered, and every read, so that a refusal and a dead
// connection can be noticed. Not a connection of its own.

#include <cstdint>
#include <functional>
#include <utility>

#include "ports/internet.h"

namespace recorder {

/// Passes everything on, but opens no address that is answered with another status than 200: the body would
/// be an error page and not sound. The inner port outlives the object.
class WatchedInternet final : public platform::Internet {
 public:
  using Text = platform::Text;
  using Handle = platform::InternetHandle;
  /// Notified after every read, before its bytes are processed.
  using Watcher = std::function<void(const platform::InternetRead&)>;

  WatchedInternet(platform::Internet& inner, Watcher watcher) : inner_(inner), watcher_(std::move(watcher)) {}

  /// The status code that the latest request was answered with; 0 when it was not answered.
  [[nodiscard]] std::int32_t AnswerStatus() const { return answer_status_; }
  /// As if nothing had been requested yet.
  void ForgetAnswer() { answer_status_ = 0; }

  Handle InternetOpenW(const Text& agent, std::uint32_t access_type) override {
    return inner_.InternetOpenW(agent, access_type);
  }
  bool SetWaitLimit(Handle session, std::uint32_t milliseconds) override {
    return inner_.SetWaitLimit(session, milliseconds);
  }
  Handle InternetConnectW(Handle session, const Text& host, std::uint16_t port,
                          std::uint32_t service) override {
    return inner_.InternetConnectW(session, host, port, service);
  }
  Handle HttpOpenRequestW(Handle connection, const Text& verb, const Text& path, const Text& version,
                          std::uint32_t flags) override {
    return inner_.HttpOpenRequestW(connection, verb, path, version, flags);
  }
  bool HttpSendRequestW(Handle request, const Text& headers) override;
  bool HttpQueryInfoW(Handle request, std::uint32_t info_level, std::span<std::byte> buffer,
                      std::uint32_t& size) override {
    return inner_.HttpQueryInfoW(request, info_level, buffer, size);
  }
  Handle InternetOpenUrlW(Handle session, const Text& url, const Text& headers, std::uint32_t flags) override;
  platform::InternetRead InternetReadFile(Handle request, std::span<std::byte> buffer) override;
  bool InternetCloseHandle(Handle handle) override { return inner_.InternetCloseHandle(handle); }
  [[nodiscard]] platform::InternetFailure LastFailure() const override { return inner_.LastFailure(); }

 private:
  [[nodiscard]] std::int32_t StatusOf(Handle request) const;

  platform::Internet& inner_;
  Watcher watcher_;
  std::int32_t answer_status_ = 0;
};

}  // namespace recorder
