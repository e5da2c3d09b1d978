#pragma once
// Which adapters the tests of the texts' contract have before them on Windows. Not for tests of one adapter.

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/win32/text/string_order.h"
#include "platform/win32/text/text_conversion.h"

namespace under_test {

using StringOrder = platform::win32::Win32StringOrder;
using TextConversion = platform::win32::Win32TextConversion;

/// Where the system's keys may differ from the port's order: in Wine they do, for a sharp s and for very long
/// numbers.
inline bool DecidesItself(std::string_view name) {
  constexpr std::array<std::string_view, 2> kNames = {"NumbersOfAnyLength",
                                                      "SharpSStandsBehindItsTwoLetters"};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace under_test
