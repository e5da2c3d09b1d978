#pragma once
// Owners of the internet library's handles, so that every path closes them, children first.
// Not for what is sent or read.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "ports/internet.h"

namespace stream {

/// How the program identifies itself to a station, in every request.
inline const platform::Text kAgent = u"WinampMPEG/5.09";
/// Asks the server to interleave titles.
inline const platform::Text kIcyMetaDataHeader = u"Icy-MetaData:1";

/// Closes its handle when destroyed. Declare parents before children.
class OwnedHandle {
 public:
  OwnedHandle(platform::Internet& internet, platform::InternetHandle handle)
      : internet_(internet), handle_(handle) {}
  ~OwnedHandle() {
    if (*this) internet_.InternetCloseHandle(handle_);
  }
  OwnedHandle(const OwnedHandle&) = delete;
  OwnedHandle& operator=(const OwnedHandle&) = delete;

  explicit operator bool() const { return handle_ != platform::InternetHandle::kNone; }
  [[nodiscard]] platform::InternetHandle Get() const { return handle_; }

 private:
  platform::Internet& internet_;
  platform::InternetHandle handle_;
};

/// A session that waits at most this many milliseconds for an answer; 0: as long as the library does.
inline platform::InternetHandle OpenSession(platform::Internet& internet, std::uint32_t wait_limit) {
  const platform::InternetHandle session = internet.InternetOpenW(kAgent, platform::kInternetOpenTypeDirect);
  if (session != platform::InternetHandle::kNone && wait_limit > 0) {
    internet.SetWaitLimit(session, wait_limit);
  }
  return session;
}

/// A session and, inside it, an opened address; without a session nothing is opened.
class OpenedStream {
 public:
  OpenedStream(platform::Internet& internet, const platform::Text& address, const platform::Text& headers,
               std::uint32_t flags, std::uint32_t wait_limit = 0)
      : internet_(internet),
        session_(internet, OpenSession(internet, wait_limit)),
        url_(internet, session_ ? internet.InternetOpenUrlW(session_.Get(), address, headers, flags)
                                : platform::InternetHandle::kNone) {}

  explicit operator bool() const { return static_cast<bool>(url_); }

  /// The bytes that one read brought; none when it failed or brought nothing.
  std::span<const std::byte> Read(std::span<std::byte> buffer) {
    const platform::InternetRead read = internet_.InternetReadFile(url_.Get(), buffer);
    return read.ok ? buffer.first(std::min(read.count, buffer.size())) : std::span<std::byte>();
  }

 private:
  platform::Internet& internet_;
  OwnedHandle session_;
  OwnedHandle url_;
};

}  // namespace stream
