#include "platform/win32/media/media_address.h"

#include <algorithm>

namespace platform::win32 {
namespace {

bool IsBlank(char16_t unit) { return unit <= 0x20 || unit == 0x7F; }

bool StartsWithScheme(const Text& text, TextView lower) {
  if (text.size() < lower.size()) return false;
  return std::equal(lower.begin(), lower.end(), text.begin(), [](char16_t wanted, char16_t unit) {
    return wanted == (unit >= u'A' && unit <= u'Z' ? unit + (u'a' - u'A') : unit);
  });
}

}  // namespace

MediaAddress ReadAddress(const Text& untrimmed) {
  const auto first = std::find_if_not(untrimmed.begin(), untrimmed.end(), IsBlank);
  const auto last = std::find_if_not(untrimmed.rbegin(), std::make_reverse_iterator(first), IsBlank).base();
  Text text(first, last);
  if (text.empty() || text.find(u'\0') != Text::npos) return {};
  const bool web = StartsWithScheme(text, u"http://") || StartsWithScheme(text, u"https://");
  const bool named = text.find(u"://") == Text::npos;
  const AddressKind kind = web ? AddressKind::kWeb : named ? AddressKind::kFile : AddressKind::kOther;
  return {kind, std::move(text)};
}

}  // namespace platform::win32
