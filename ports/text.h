#pragma once
// No port: text as the program and all ports hold it, UTF-16, so that positions and limits count 16-bit
// units. Not for bytes: what comes from a file or a server is std::string until it has been decoded.

#include <string>
#include <string_view>

namespace platform {

using Text = std::u16string;
using TextView = std::u16string_view;

}  // namespace platform
