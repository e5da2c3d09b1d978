#include "platform/values/guid_text.h"

#include <cstddef>
#include <cstdint>

namespace platform::values {

namespace {

constexpr TextView kShape = u"{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";

std::optional<std::uint32_t> DigitValue(char16_t digit) {
  if (digit >= u'0' && digit <= u'9') return static_cast<std::uint32_t>(digit - u'0');
  if (digit >= u'a' && digit <= u'f') return static_cast<std::uint32_t>(digit - u'a' + 10);
  if (digit >= u'A' && digit <= u'F') return static_cast<std::uint32_t>(digit - u'A' + 10);
  return std::nullopt;
}

bool HasShape(TextView text) {
  if (text.size() != kShape.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool fits = kShape[i] == u'x' ? DigitValue(text[i]).has_value() : text[i] == kShape[i];
    if (!fits) return false;
  }
  return true;
}

/// The number that `count` digits name. Only for a text whose shape was checked.
std::uint32_t Number(TextView text, std::size_t first, std::size_t count) {
  std::uint32_t number = 0;
  for (const char16_t digit : text.substr(first, count)) number = number * 16 + DigitValue(digit).value_or(0);
  return number;
}

void AppendDigits(Text& text, std::uint32_t number, int count) {
  constexpr TextView kDigits = u"0123456789ABCDEF";
  for (int shift = (count - 1) * 4; shift >= 0; shift -= 4) text += kDigits[(number >> shift) & 15u];
}

}  // namespace

std::optional<Guid> ParseGuid(TextView text) {
  if (!HasShape(text)) return std::nullopt;
  Guid guid;
  guid.data1 = Number(text, 1, 8);
  guid.data2 = static_cast<std::uint16_t>(Number(text, 10, 4));
  guid.data3 = static_cast<std::uint16_t>(Number(text, 15, 4));
  for (std::size_t i = 0; i < guid.data4.size(); ++i) {
    const std::size_t first = i < 2 ? 20 + 2 * i : 21 + 2 * i;
    guid.data4[i] = static_cast<std::uint8_t>(Number(text, first, 2));
  }
  return guid;
}

Text GuidText(const Guid& guid) {
  Text text = u"{";
  AppendDigits(text, guid.data1, 8);
  text += u'-';
  AppendDigits(text, guid.data2, 4);
  text += u'-';
  AppendDigits(text, guid.data3, 4);
  text += u'-';
  for (std::size_t i = 0; i < guid.data4.size(); ++i) {
    if (i == 2) text += u'-';
    AppendDigits(text, guid.data4[i], 2);
  }
  return text + u'}';
}

}  // namespace platform::values
