#include "platform/win32/internet/charsets.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

struct NamedCodePage {
  std::string_view name;
  UINT number;
};

// Public reference: the system's list of code page identifiers.
constexpr std::array kNamed = {
    NamedCodePage{"koi8-r", 20866},       NamedCodePage{"koi8-u", 21866}, NamedCodePage{"macintosh", 10000},
    NamedCodePage{"shift_jis", 932},      NamedCodePage{"sjis", 932},     NamedCodePage{"euc-jp", 20932},
    NamedCodePage{"iso-2022-jp", 50220},  NamedCodePage{"gb2312", 936},   NamedCodePage{"gbk", 936},
    NamedCodePage{"gb18030", 54936},      NamedCodePage{"big5", 950},     NamedCodePage{"euc-kr", 949},
    NamedCodePage{"ks_c_5601-1987", 949}, NamedCodePage{"tis-620", 874},
};
// Of the families whose names end in their number.
constexpr UINT kFirstIso = 28590;  // plus the part of ISO 8859

std::optional<UINT> NumberAfter(std::string_view name, std::string_view beginning) {
  if (!name.starts_with(beginning)) return std::nullopt;
  name.remove_prefix(beginning.size());
  UINT number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  const bool is_number = !name.empty() && error == std::errc() && end == name.data() + name.size();
  return is_number ? std::optional(number) : std::nullopt;
}

std::optional<UINT> CodePageOf(std::string_view name) {
  const auto found = std::find_if(kNamed.begin(), kNamed.end(),
                                  [name](const NamedCodePage& page) { return page.name == name; });
  if (found != kNamed.end()) return found->number;
  if (const auto part = NumberAfter(name, "iso-8859-"); part && *part <= 15) return kFirstIso + *part;
  for (const std::string_view family : {"windows-", "cp", "ibm"}) {
    if (const auto number = NumberAfter(name, family)) return number;
  }
  return std::nullopt;
}

}  // namespace

std::optional<Text> DecodeCharset(const std::string& charset, std::string_view body) {
  const std::optional<UINT> page = CodePageOf(charset);
  constexpr std::size_t kLongest = std::numeric_limits<int>::max();
  if (!page || !::IsValidCodePage(*page) || body.size() > kLongest) return std::nullopt;
  if (body.empty()) return Text();
  const int size = static_cast<int>(body.size());
  const int length = ::MultiByteToWideChar(*page, 0, body.data(), size, nullptr, 0);
  if (length <= 0) return std::nullopt;
  Text text(static_cast<std::size_t>(length), u'\0');
  ::MultiByteToWideChar(*page, 0, body.data(), size, WideBuffer(text.data()), length);
  return text;
}

}  // namespace platform::win32
