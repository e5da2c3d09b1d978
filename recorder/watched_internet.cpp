#include "recorder/watched_internet.h"

#include "app/text/numbers.h"
#include "stream/header_query.h"

namespace recorder {

using platform::InternetHandle;
using platform::InternetRead;

namespace {

constexpr std::int32_t kOk = 200;

}  // namespace

bool WatchedInternet::HttpSendRequestW(Handle request, const Text& headers) {
  const bool sent = inner_.HttpSendRequestW(request, headers);
  answer_status_ = sent ? StatusOf(request) : 0;
  return sent;
}

InternetHandle WatchedInternet::InternetOpenUrlW(Handle session, const Text& url, const Text& headers,
                                                 std::uint32_t flags) {
  const Handle opened = inner_.InternetOpenUrlW(session, url, headers, flags);
  answer_status_ = opened == Handle::kNone ? 0 : StatusOf(opened);
  if (opened == Handle::kNone || answer_status_ == kOk) return opened;
  inner_.InternetCloseHandle(opened);
  return Handle::kNone;
}

InternetRead WatchedInternet::InternetReadFile(Handle request, std::span<std::byte> buffer) {
  const InternetRead read = inner_.InternetReadFile(request, buffer);
  watcher_(read);
  return read;
}

std::int32_t WatchedInternet::StatusOf(Handle request) const {
  return app::ToInt32(stream::QueryHeaderText(inner_, request, platform::kHttpQueryStatusCode)).value_or(0);
}

}  // namespace recorder
