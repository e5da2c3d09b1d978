#include "platform/values/value_text.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>

#include "platform/values/guid_text.h"

namespace platform::values {

namespace {

/// Code page 1252, bytes 0x80 to 0x9F; the five unassigned ones are the control characters of the same
/// number. All other bytes are the character of their number.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr int kFloatDigits = 7;
constexpr int kDoubleDigits = 15;

Text FromCodePage(const std::string& bytes) {
  Text text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    const bool mapped = code >= 0x80 && code <= 0x9F;
    text += mapped ? kUpperControls[static_cast<std::size_t>(code - 0x80)] : static_cast<char16_t>(code);
  }
  return text;
}

Text FromAscii(std::string_view characters) { return Text(characters.begin(), characters.end()); }

template <typename Integer>
Text WholeNumberText(Integer number) {
  std::array<char, 24> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  return FromAscii({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
}

Text FloatText(double number, int digits) {
  std::array<char, 48> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, digits)
          .ptr;
  Text text = FromAscii({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
  if (const auto exponent = text.find(u"e+"); exponent != Text::npos) text[exponent] = u'E';
  if (const auto exponent = text.find(u"e-"); exponent != Text::npos) text[exponent] = u'E';
  return text;
}

/// The result of `convert` for a payload that is a `Payload`.
template <typename Payload, typename Convert>
std::optional<Text> If(const PropertyValue& value, Convert convert) {
  const auto* payload = std::get_if<Payload>(&value.payload);
  if (payload == nullptr) return std::nullopt;
  return convert(*payload);
}

}  // namespace

std::optional<Text> ValueText(const PropertyValue& value) {
  switch (value.type) {
    case PropertyType::kEmpty:
      return Text();
    case PropertyType::kString:
    case PropertyType::kWideString:
      return If<Text>(value, [](const Text& text) { return text; });
    case PropertyType::kAnsiString:
      return If<std::string>(value, FromCodePage);
    case PropertyType::kBoolean:
      return If<std::int64_t>(value, [](std::int64_t set) { return Text(set != 0 ? u"-1" : u"0"); });
    case PropertyType::kInt8:
    case PropertyType::kUInt8:
    case PropertyType::kInt16:
    case PropertyType::kUInt16:
    case PropertyType::kInt32:
    case PropertyType::kUInt32:
    case PropertyType::kInt64:
    case PropertyType::kInt:
    case PropertyType::kUInt:
      return If<std::int64_t>(value, WholeNumberText<std::int64_t>);
    case PropertyType::kUInt64:
      return If<std::uint64_t>(value, WholeNumberText<std::uint64_t>);
    case PropertyType::kFloat:
      return If<double>(value, [](double number) { return FloatText(number, kFloatDigits); });
    case PropertyType::kDouble:
      return If<double>(value, [](double number) { return FloatText(number, kDoubleDigits); });
    case PropertyType::kGuid:
      return If<Guid>(value, GuidText);
    case PropertyType::kBlob:
    case PropertyType::kWideStringVector:
    case PropertyType::kStringArray:
      return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace platform::values
