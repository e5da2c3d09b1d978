#pragma once
// Where a remembered window may be opened. Not how it is remembered (app/forms/window_memory.h).

#include <vector>

namespace app {

/// In the toolkit's pixels: where the frame's upper left corner is on the desktop, and the size within it.
struct WindowPlace {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

/// The room that a screen leaves to windows, in the same pixels.
struct ScreenRoom {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

/// What the frame adds to a window's size, at most.
struct FrameSize {
  int width = 0;
  int height = 0;
};

/// The place as it is while enough of the window's upper edge is on a screen for the user to take hold of it.
/// Otherwise the window is moved onto the screen that shows most of it, or the first one. A window that is
/// larger than that screen is made as large as the screen. Without screens nothing changes.
[[nodiscard]] WindowPlace PlaceOnAScreen(const WindowPlace& place, const std::vector<ScreenRoom>& screens,
                                         const FrameSize& frame);

}  // namespace app
