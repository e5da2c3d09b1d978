#pragma once
// Decodes a picture's file by the system's imaging component. Not for icons.

#include <optional>

#include "platform/win32/ui/drawing.h"
#include "ports/text.h"

namespace platform::win32 {

struct DecodedPicture {
  int natural_width = 0;
  int natural_height = 0;
  Pixels pixels;  ///< scaled down where it is larger than a panel can show
};

/// Nothing for a file that is no picture, or too large a one.
[[nodiscard]] std::optional<DecodedPicture> DecodePictureFile(const Text& path);

}  // namespace platform::win32
