#pragma once
// Shapes and pictures with smooth edges: what the program draws itself. Not when it is drawn.

#include <cstdint>
#include <vector>

#include "controls/captioned.h"
#include "controls/list_view.h"
#include "platform/win32/base/handles.h"
#include "platform/win32/ui/scale.h"

namespace platform::win32 {

/// A picture in memory, four bytes to a pixel: blue, green, red and opacity, by which they are multiplied.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> bytes;
};

/// Colours are those of the system (COLORREF).
using Color = std::uint32_t;

/// In the middle of `area`; kNone draws nothing.
void DrawGlyph(HDC context, controls::Glyph glyph, const PixelPlace& area, Color color);
/// A disc in the lower right corner of the icon's area: a triangle that points on, or three dots.
void DrawMark(HDC context, controls::RowMark mark, const PixelPlace& icon, Color ground, Color ink);
/// Scaled to `area`.
void DrawPicture(HDC context, const Pixels& picture, const PixelPlace& area);

}  // namespace platform::win32
