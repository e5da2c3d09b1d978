#include "playlist/web_address.h"

#include <algorithm>

namespace playlist {
namespace {

using app::Text;
using app::TextView;

constexpr char16_t Lower(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

bool IsControl(char16_t unit) { return unit < u' ' || unit == u'\u007F'; }

}  // namespace

bool StartsWithIgnoringCase(TextView text, TextView prefix) {
  if (text.size() < prefix.size()) return false;
  return std::equal(prefix.begin(), prefix.end(), text.begin(),
                    [](char16_t wanted, char16_t unit) { return Lower(unit) == wanted; });
}

Text HostOf(TextView address) {
  constexpr TextView kSeparator = u"://";
  const auto separator = address.find(kSeparator);
  if (separator == TextView::npos) return {};
  TextView host = address.substr(separator + kSeparator.size());
  host = host.substr(0, host.find_first_of(u"/?#"));
  const auto user_end = host.rfind(u'@');
  if (user_end != TextView::npos) host.remove_prefix(user_end + 1);
  if (host.find(u' ') != TextView::npos) return {};
  if (host.starts_with(u'[')) return Text(host.substr(1, host.find(u']') - 1));
  return Text(host.substr(0, host.find(u':')));
}

bool IsWebAddress(TextView text) {
  if (!StartsWithIgnoringCase(text, u"http://") && !StartsWithIgnoringCase(text, u"https://")) return false;
  return text.size() <= kLongestAddress && std::none_of(text.begin(), text.end(), IsControl) &&
         !HostOf(text).empty();
}

}  // namespace playlist
