#include "stream/header_query.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "app/text_helpers.h"
#include "stream/internet_handles.h"
#include "stream/stream_address.h"

namespace stream {

using platform::Internet;
using platform::InternetHandle;

Text QueryHeaderText(Internet& internet, InternetHandle request, std::uint32_t info_level) {
  std::uint32_t size = 0;
  // Without a buffer the call is expected to fail and to tell the size.
  if (internet.HttpQueryInfoW(request, info_level, {}, size)) return {};
  std::vector<std::byte> buffer(size);
  if (!internet.HttpQueryInfoW(request, info_level, buffer, size)) return {};
  Text text(std::min<std::size_t>(size, buffer.size()) / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), buffer.data(), text.size() * sizeof(char16_t));
  return text;
}

std::optional<std::vector<Text>> QueryStreamHeaders(Internet& internet, const Text& address) {
  const std::optional<QueryTarget> target = QueryTargetOf(address);
  if (!target) return std::nullopt;
  const OwnedHandle session(internet, internet.InternetOpenW(kAgent, platform::kInternetOpenTypeDirect));
  if (!session) return std::nullopt;
  const OwnedHandle connection(internet, internet.InternetConnectW(session.Get(), target->host, target->port,
                                                                   platform::kInternetServiceHttp));
  if (!connection) return std::nullopt;
  const OwnedHandle request(internet, internet.HttpOpenRequestW(connection.Get(), u"GET", target->path,
                                                                u"HTTP/1.1", target->flags));
  if (!request) return std::nullopt;
  if (!internet.HttpSendRequestW(request.Get(), kIcyMetaDataHeader)) return std::nullopt;
  if (QueryHeaderText(internet, request.Get(), platform::kHttpQueryStatusCode) != u"200") return std::nullopt;
  const Text block = QueryHeaderText(internet, request.Get(), platform::kHttpQueryRawHeadersCrLf);
  if (block.empty()) return std::nullopt;
  return app::Split(block, kCrLf);
}

}  // namespace stream
