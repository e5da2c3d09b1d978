#pragma once
// Where a picture is placed inside its panel. Not decoding, not painting.

#include <algorithm>
#include <cstdint>

#include "controls/control.h"

namespace controls {

/// The gap in twips between a picture and the panel's lower edge.
inline constexpr int kPictureBottomGap = 30;

/// A picture of `width` x `height` twips scaled down, never up, to fit into the right half of `panel` below
/// `top`, keeping its aspect ratio, in the panel's lower right corner. Empty when nothing fits.
[[nodiscard]] inline Place FitLowerRight(int width, int height, const Place& panel, int top) {
  const std::int64_t room_across = panel.width / 2;
  const std::int64_t room_down = std::int64_t{panel.height} - top - kPictureBottomGap;
  if (width <= 0 || height <= 0 || room_across <= 0 || room_down <= 0) return {};
  std::int64_t across = std::min<std::int64_t>(width, room_across);
  std::int64_t down = across * height / width;
  if (down > room_down) {
    down = room_down;
    across = down * width / height;
  }
  return {static_cast<int>(panel.width - across), static_cast<int>(panel.height - down - kPictureBottomGap),
          static_cast<int>(across), static_cast<int>(down)};
}

}  // namespace controls
