#include "stream/header_query.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>

#include "app/text/numbers.h"
#include "app/text/text_helpers.h"
#include "stream/internet_handles.h"
#include "stream/stream_address.h"

namespace stream {

using platform::Internet;
using platform::InternetHandle;

Text QueryHeaderText(Internet& internet, InternetHandle request, std::uint32_t info_level) {
  std::uint32_t size = 0;
  // Without a buffer the call is expected to fail and to report the size.
  if (internet.HttpQueryInfoW(request, info_level, {}, size)) return {};
  std::vector<std::byte> buffer(size);
  if (!internet.HttpQueryInfoW(request, info_level, buffer, size)) return {};
  Text text(std::min<std::size_t>(size, buffer.size()) / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), buffer.data(), text.size() * sizeof(char16_t));
  return text;
}

namespace {

// The result when a step fails without a server being involved.
QueriedHeaders NotAsked() { return {{}, {QueryFailure::Kind::kOther}}; }

QueryFailure FailureOfStatus(TextView status) {
  const std::int32_t number = app::ToInt32(status).value_or(0);
  const bool is_status = status.size() == 3 && number >= 100;
  return is_status ? QueryFailure{QueryFailure::Kind::kHttpStatus, number}
                   : QueryFailure{QueryFailure::Kind::kOther};
}

}  // namespace

QueriedHeaders QueryStreamHeaders(Internet& internet, const Text& address, std::uint32_t wait_limit) {
  const std::optional<QueryTarget> target = QueryTargetOf(address);
  if (!target) return NotAsked();
  const OwnedHandle session(internet, OpenSession(internet, wait_limit));
  if (!session) return NotAsked();
  const OwnedHandle connection(internet, internet.InternetConnectW(session.Get(), target->host, target->port,
                                                                   platform::kInternetServiceHttp));
  if (!connection) return NotAsked();
  const OwnedHandle request(internet, internet.HttpOpenRequestW(connection.Get(), u"GET", target->path,
                                                                u"HTTP/1.1", target->flags));
  if (!request) return NotAsked();
  if (!internet.HttpSendRequestW(request.Get(), kIcyMetaDataHeader)) {
    return {{}, QueryFailureFrom(internet.LastFailure())};
  }
  const Text status = QueryHeaderText(internet, request.Get(), platform::kHttpQueryStatusCode);
  if (status != u"200") return {{}, FailureOfStatus(status)};
  const Text block = QueryHeaderText(internet, request.Get(), platform::kHttpQueryRawHeadersCrLf);
  if (block.empty()) return {{}, {QueryFailure::Kind::kOther}};
  return {app::Split(block, kCrLf), {}};
}

}  // namespace stream
