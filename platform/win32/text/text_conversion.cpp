#include "platform/win32/text/text_conversion.h"

#include "platform/win32/base/windows_api.h"

#include <cstddef>
#include <limits>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

constexpr std::size_t kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// The system writes one "?" for each half of a pair.
Text WithSingleUnits(TextView text) {
  Text units;
  units.reserve(text.size());
  for (std::size_t index = 0; index < text.size(); ++index) {
    const bool is_pair =
        IsHighSurrogate(text[index]) && index + 1 < text.size() && IsLowSurrogate(text[index + 1]);
    units.push_back(is_pair ? u'?' : text[index]);
    if (is_pair) ++index;
  }
  return units;
}

/// What UTF-8 has no form for becomes U+FFFD; code page 1252 takes "?" and nothing that merely looks alike.
std::string Encoded(UINT page, TextView text) {
  const bool is_utf8 = page == CP_UTF8;
  const DWORD flags = is_utf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const char* const missing = is_utf8 ? nullptr : "?";
  const auto units = static_cast<int>(text.size());
  const int size = ::WideCharToMultiByte(page, flags, WideData(text), units, nullptr, 0, missing, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(page, flags, WideData(text), units, bytes.data(), size, missing, nullptr);
  return bytes;
}

Text WithCase(TextView text, DWORD(WINAPI* change)(LPWSTR, DWORD)) {
  Text changed(text);
  if (!changed.empty() && changed.size() <= kMost) {
    change(WideBuffer(changed.data()), static_cast<DWORD>(changed.size()));
  }
  return changed;
}

}  // namespace

std::string Win32TextConversion::WideCharToMultiByte(CodePage page, TextView text) {
  if (text.empty() || text.size() > kMost) return {};
  if (page == CodePage::kUtf8) return Encoded(CP_UTF8, text);
  return Encoded(static_cast<UINT>(page), WithSingleUnits(text));
}

Text Win32TextConversion::MultiByteToWideChar(CodePage page, std::string_view bytes) {
  if (bytes.empty() || bytes.size() > kMost) return {};
  const auto code_page = static_cast<UINT>(page);
  const auto size = static_cast<int>(bytes.size());
  const int units = ::MultiByteToWideChar(code_page, 0, bytes.data(), size, nullptr, 0);
  Text text(static_cast<std::size_t>(units), u'\0');
  ::MultiByteToWideChar(code_page, 0, bytes.data(), size, WideBuffer(text.data()), units);
  return text;
}

Text Win32TextConversion::CharLowerW(TextView text) { return WithCase(text, ::CharLowerBuffW); }

Text Win32TextConversion::CharUpperW(TextView text) { return WithCase(text, ::CharUpperBuffW); }

}  // namespace platform::win32
