#include "platform/icu/string_order.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>

namespace platform::icu {
namespace {

/// ICU weighs a number in segments of 254 digits, so longer ones would be in the wrong order.
constexpr std::size_t kSegment = 254;
constexpr std::size_t kDigitsInSegment = kSegment - 1;

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

/// Appends a number of more than 253 digits as segments that weigh the same way as the number itself: one
/// with a leading 9 and the count of digits, which sorts after every shorter number, then the digits in
/// groups, each behind a 1 that keeps its zeros significant.
void AppendLongNumber(Text& result, TextView digits) {
  const std::string count = std::to_string(digits.size());
  result.push_back(u'9');
  result.append(kDigitsInSegment - count.size(), u'0');
  result.append(count.begin(), count.end());
  for (std::size_t at = 0; at < digits.size(); at += kDigitsInSegment) {
    const TextView group = digits.substr(at, kDigitsInSegment);
    result.push_back(u'1');
    result.append(group);
    result.append(kDigitsInSegment - group.size(), u'0');
  }
}

Text WithWeighableNumbers(TextView text) {
  Text result;
  for (std::size_t at = 0; at < text.size();) {
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(at);
    const auto end = std::find_if_not(begin, text.end(), IsDigit);
    const auto significant = std::find_if(begin, end, [](char16_t unit) { return unit != u'0'; });
    if (static_cast<std::size_t>(end - significant) > kDigitsInSegment) {
      AppendLongNumber(result, TextView(significant, end));
    } else {
      result.append(begin, end);
    }
    at = static_cast<std::size_t>(end - text.begin());
    if (at < text.size()) result.push_back(text[at++]);
  }
  return result;
}

std::int32_t Length(TextView text) {
  constexpr std::size_t kLongest = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(text.size(), kLongest));
}

}  // namespace

IcuStringOrder::IcuStringOrder() {
  UErrorCode status = U_ZERO_ERROR;
  collator_.reset(ucol_open("de", &status));
  if (!collator_) return;
  ucol_setAttribute(collator_.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
  ucol_setAttribute(collator_.get(), UCOL_STRENGTH, UCOL_SECONDARY, &status);
  ucol_setAttribute(collator_.get(), UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, &status);
  if (U_FAILURE(status)) collator_.reset();
}

int IcuStringOrder::StrCmpLogicalW(const Text& first, const Text& second) {
  // Without ICU's data there is no order of names; the order of the code units is still a total one.
  if (!collator_) return first.compare(second);
  if (first.size() > kDigitsInSegment || second.size() > kDigitsInSegment) {
    const Text left = WithWeighableNumbers(first);
    const Text right = WithWeighableNumbers(second);
    return ucol_strcoll(collator_.get(), left.data(), Length(left), right.data(), Length(right));
  }
  return ucol_strcoll(collator_.get(), first.data(), Length(first), second.data(), Length(second));
}

std::string IcuStringOrder::SortKey(const Text& text) {
  std::string key;
  if (!collator_) {
    for (const char16_t unit : text) {
      key.push_back(static_cast<char>(unit >> 8U));
      key.push_back(static_cast<char>(unit & 0xFFU));
    }
    return key;
  }
  const bool may_have_long_number = text.size() > kDigitsInSegment;
  const Text weighable_text = may_have_long_number ? WithWeighableNumbers(text) : Text();
  const Text& weighable = may_have_long_number ? weighable_text : text;
  const auto make = [&](std::span<char> room) {
    return static_cast<std::size_t>(
        ucol_getSortKey(collator_.get(), weighable.data(), Length(weighable),
                        reinterpret_cast<std::uint8_t*>(room.data()),  // NOLINT: bytes are characters
                        static_cast<std::int32_t>(room.size())));
  };
  // The size counts a NUL at the end. A name's key is hardly longer than the name in bytes.
  std::array<char, 128> usual;
  const std::size_t size = make(usual);
  if (size <= usual.size()) return {usual.data(), size};
  key.resize(size);
  make(key);
  return key;
}

}  // namespace platform::icu
