#pragma once
// The internet port with a watcher who is told of every read, so that a dead connection can be noticed.
// Not a connection of its own: everything is passed on.

#include <functional>
#include <utility>

#include "platform/internet.h"

namespace recorder {

/// The inner port outlives the object.
class WatchedInternet final : public platform::Internet {
 public:
  using Text = platform::Text;
  using Handle = platform::InternetHandle;
  /// Told after every read, before its bytes are dealt with.
  using Watcher = std::function<void(const platform::InternetRead&)>;

  WatchedInternet(platform::Internet& inner, Watcher watcher) : inner_(inner), watcher_(std::move(watcher)) {}

  Handle InternetOpenW(const Text& agent, std::uint32_t access_type) override {
    return inner_.InternetOpenW(agent, access_type);
  }
  Handle InternetConnectW(Handle session, const Text& host, std::uint16_t port,
                          std::uint32_t service) override {
    return inner_.InternetConnectW(session, host, port, service);
  }
  Handle HttpOpenRequestW(Handle connection, const Text& verb, const Text& path, const Text& version,
                          std::uint32_t flags) override {
    return inner_.HttpOpenRequestW(connection, verb, path, version, flags);
  }
  bool HttpSendRequestW(Handle request, const Text& headers) override {
    return inner_.HttpSendRequestW(request, headers);
  }
  bool HttpQueryInfoW(Handle request, std::uint32_t info_level, std::span<std::byte> buffer,
                      std::uint32_t& size) override {
    return inner_.HttpQueryInfoW(request, info_level, buffer, size);
  }
  Handle InternetOpenUrlW(Handle session, const Text& url, const Text& headers,
                          std::uint32_t flags) override {
    return inner_.InternetOpenUrlW(session, url, headers, flags);
  }
  platform::InternetRead InternetReadFile(Handle request, std::span<std::byte> buffer) override {
    const platform::InternetRead read = inner_.InternetReadFile(request, buffer);
    watcher_(read);
    return read;
  }
  bool InternetCloseHandle(Handle handle) override { return inner_.InternetCloseHandle(handle); }

 private:
  platform::Internet& inner_;
  Watcher watcher_;
};

}  // namespace recorder
