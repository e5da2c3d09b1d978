#pragma once
// Which adapters the tests of the texts' contract have before them on Linux. Not for tests of one adapter.

#include <string_view>

#include "platform/icu/string_order.h"
#include "platform/icu/text_conversion.h"

namespace under_test {

using StringOrder = platform::icu::IcuStringOrder;
using TextConversion = platform::icu::IcuTextConversion;

/// Which names of the order the port leaves to the system: here none.
inline bool DecidesItself(std::string_view /*name*/) { return false; }

}  // namespace under_test
