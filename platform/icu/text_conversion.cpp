#include "platform/icu/text_conversion.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace platform::icu {
namespace {

constexpr std::size_t kLongest = std::numeric_limits<std::int32_t>::max();
constexpr UChar32 kReplacement = 0xFFFD;

/// The characters of the bytes 0x80 to 0x9F. All other bytes are the character of their own number.
constexpr std::array<char16_t, 32> kUpperControls = {
    u'\u20AC', u'\x81',   u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', u'\x8D',   u'\u017D', u'\x8F',
    u'\x90',   u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', u'\x9D',   u'\u017E', u'\u0178'};

bool IsItsOwnByte(char16_t unit) { return unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF); }

char AnsiByte(char16_t unit) {
  if (IsItsOwnByte(unit)) return static_cast<char>(unit);
  for (std::size_t index = 0; index < kUpperControls.size(); ++index) {
    if (kUpperControls[index] == unit) return static_cast<char>(0x80 + index);
  }
  return '?';
}

std::string ToAnsi(TextView text) {
  std::string bytes(text.size(), '\0');
  char* byte = bytes.data();
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char16_t unit = text[index];
    *byte++ = AnsiByte(unit);
    const bool pair = U16_IS_LEAD(unit) && index + 1 < text.size() && U16_IS_TRAIL(text[index + 1]);
    if (pair) ++index;
  }
  bytes.resize(static_cast<std::size_t>(byte - bytes.data()));
  return bytes;
}

char16_t AnsiCharacter(char byte) {
  const auto number = static_cast<unsigned char>(byte);
  return IsItsOwnByte(number) ? char16_t{number} : kUpperControls[number - 0x80U];
}

Text FromAnsi(std::string_view bytes) {
  Text text(bytes.size(), u'\0');
  std::transform(bytes.data(), bytes.data() + bytes.size(), text.data(), AnsiCharacter);
  return text;
}

std::string ToUtf8(TextView text) {
  if (text.size() > kLongest) return {};
  const auto length = static_cast<std::int32_t>(text.size());
  std::int32_t needed = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(nullptr, 0, &needed, text.data(), length, kReplacement, nullptr, &status);
  if (status != U_BUFFER_OVERFLOW_ERROR) return {};
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  status = U_ZERO_ERROR;
  u_strToUTF8WithSub(bytes.data(), needed, nullptr, text.data(), length, kReplacement, nullptr, &status);
  return U_SUCCESS(status) ? bytes : std::string();
}

Text FromUtf8(std::string_view bytes) {
  if (bytes.size() > kLongest) return {};
  // No byte gives more than one unit, so that the text never outgrows this buffer.
  Text text(bytes.size(), u'\0');
  std::int32_t units = 0;
  UErrorCode status = U_ZERO_ERROR;
  const auto length = static_cast<std::int32_t>(bytes.size());
  u_strFromUTF8WithSub(text.data(), length, &units, bytes.data(), length, kReplacement, nullptr, &status);
  if (U_FAILURE(status)) return {};
  text.resize(static_cast<std::size_t>(units));
  return text;
}

using CaseMap = UChar32 (*)(UChar32);

/// Of ASCII the letters from `first` to `last` change, without asking ICU: most texts have no others.
Text MapUnits(TextView text, CaseMap map, CaseMap back, char16_t first, char16_t last) {
  constexpr char16_t kCaseBit = 0x20;
  Text mapped(text);
  for (char16_t& unit : mapped) {
    if (unit < 0x80) {
      if (unit >= first && unit <= last) unit = static_cast<char16_t>(unit ^ kCaseBit);
      continue;
    }
    const UChar32 other = map(unit);
    if (other <= 0xFFFF && back(other) == unit) unit = static_cast<char16_t>(other);
  }
  return mapped;
}

}  // namespace

std::string IcuTextConversion::WideCharToMultiByte(CodePage page, TextView text) {
  if (text.empty()) return {};
  return page == CodePage::kUtf8 ? ToUtf8(text) : ToAnsi(text);
}

Text IcuTextConversion::MultiByteToWideChar(CodePage page, std::string_view bytes) {
  if (bytes.empty()) return {};
  return page == CodePage::kUtf8 ? FromUtf8(bytes) : FromAnsi(bytes);
}

Text IcuTextConversion::CharLowerW(TextView text) { return MapUnits(text, u_tolower, u_toupper, u'A', u'Z'); }

Text IcuTextConversion::CharUpperW(TextView text) { return MapUnits(text, u_toupper, u_tolower, u'a', u'z'); }

}  // namespace platform::icu
