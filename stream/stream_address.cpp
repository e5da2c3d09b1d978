#include "stream/stream_address.h"

#include <cstddef>
#include <limits>

#include "app/text/numbers.h"
#include "app/text/text_helpers.h"
#include "ports/internet.h"

namespace stream {
namespace {

constexpr TextView kHttp = u"http://";
constexpr TextView kHttps = u"https://";
constexpr std::uint32_t kPlainFlags = platform::kInternetFlagReload;
constexpr std::uint32_t kSecureFlags = platform::kInternetFlagReload | platform::kInternetFlagSecure;

// Puts "host" or "host:port" into the target; false when the port is not valid.
bool TakeHostPart(TextView host_part, QueryTarget& target) {
  const std::size_t colon = host_part.find(u':');
  target.host = host_part.substr(0, colon);
  if (colon == TextView::npos) return true;
  // A line end that came with the address is not part of the number.
  const std::optional<std::int32_t> port = app::ToInt32(app::TrimControls(host_part.substr(colon + 1)));
  if (!port || *port < 0 || *port > std::numeric_limits<std::uint16_t>::max()) return false;
  target.port = static_cast<std::uint16_t>(*port);
  return true;
}

}  // namespace

std::optional<std::uint32_t> OpenFlagsOf(TextView address) {
  if (StartsWithIgnoringCase(address, kHttp)) return kPlainFlags;
  if (StartsWithIgnoringCase(address, kHttps)) return kSecureFlags;
  return std::nullopt;
}

std::optional<QueryTarget> QueryTargetOf(TextView address) {
  QueryTarget target;
  Text rest;
  if (StartsWithIgnoringCase(address, kHttp)) {
    rest = RemoveAll(address, kHttp);
    target.port = 80;
    target.flags = kPlainFlags;
  } else if (StartsWithIgnoringCase(address, kHttps)) {
    rest = RemoveAll(address, kHttps);
    target.port = 443;
    target.flags = kSecureFlags;
  }
  const std::size_t slash = rest.find(u'/');
  if (slash != Text::npos) {
    target.path = rest.substr(slash);
    if (!TakeHostPart(TextView(rest).substr(0, slash), target)) return std::nullopt;
    return target;
  }
  target.path = rest;
  if (rest.find(u':') != Text::npos && !TakeHostPart(rest, target)) return std::nullopt;
  return target;
}

}  // namespace stream
