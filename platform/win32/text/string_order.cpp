#include "platform/win32/text/string_order.h"

#include "platform/win32/base/windows_api.h"

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

constexpr const wchar_t* kGerman = L"de-DE";
/// With SORT_STRINGSORT a hyphen or an apostrophe counts like any other sign.
constexpr DWORD kRules = LCMAP_SORTKEY | NORM_IGNORECASE | SORT_DIGITSASNUMBERS | SORT_STRINGSORT;

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

/// The system tells numbers with leading zeros from those without.
Text WithoutLeadingZeros(const Text& text) {
  Text shorter;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool leads = text[at] == u'0' && at + 1 < text.size() && IsDigit(text[at + 1]);
    const bool follows_a_digit = !shorter.empty() && IsDigit(shorter.back());
    if (!leads || follows_a_digit) shorter += text[at];
  }
  return shorter;
}

int Map(const Text& text, char* key, int room) {
  // For a key the buffer's length is in bytes, whatever the parameter's type.
  return ::LCMapStringEx(kGerman, kRules, WideData(text), static_cast<int>(text.size()),
                         reinterpret_cast<wchar_t*>(key), room, nullptr, nullptr, 0);
}

}  // namespace

int Win32StringOrder::StrCmpLogicalW(const Text& first, const Text& second) {
  return SortKey(first).compare(SortKey(second));
}

std::string Win32StringOrder::SortKey(const Text& text) {
  // Of an empty text the system makes none.
  const Text plain = WithoutLeadingZeros(text);
  std::string key(static_cast<std::size_t>(Map(plain, nullptr, 0)), '\0');
  key.resize(static_cast<std::size_t>(Map(plain, key.data(), static_cast<int>(key.size()))));
  return key;
}

}  // namespace platform::win32
