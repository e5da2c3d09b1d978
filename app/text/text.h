#pragma once
// Text as the program's logic names it. Not for bytes; those are std::string until they are decoded.

#include "ports/text.h"

namespace app {

using platform::Text;
using platform::TextView;

}  // namespace app
