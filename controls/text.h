#pragma once
// Text as controls store it: UTF-16. Not for bytes or file names.

#include <string>
#include <string_view>

namespace controls {

using Text = std::u16string;
using TextView = std::u16string_view;

}  // namespace controls
