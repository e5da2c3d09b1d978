#pragma once
// Shapes and pictures with smooth edges: what the program draws itself. Not when it is drawn.

#include <cstdint>
#include <vector>

#include "controls/captioned.h"
#include "controls/list_view.h"
#include "platform/front/colors.h"
#include "platform/win32/base/handles.h"
#include "platform/win32/ui/scale.h"

struct tagRECT;

namespace platform::win32 {

/// A picture in memory, four bytes to a pixel: blue, green, red and opacity, by which they are multiplied.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> bytes;
};

/// Colours are those of the system (COLORREF).
using Color = std::uint32_t;

/// Starts the library that draws, if it has not been started; it ends with the process. False: there is none.
[[nodiscard]] bool CanDraw();

[[nodiscard]] Color ToSystem(const front::Rgb& color);
[[nodiscard]] front::Rgb FromSystem(Color color);

void FillArea(HDC context, const tagRECT& area, Color color);
/// A line of one pixel along the area's edge, inside it.
void FrameArea(HDC context, const tagRECT& area, Color color);
/// The system's frame of dots, which inverts what it covers.
void DrawFocus(HDC context, const tagRECT& area);

/// In the largest square in the middle of `area`; kNone draws nothing.
void DrawGlyph(HDC context, controls::Glyph glyph, const PixelPlace& area, Color color);
/// A disc in the lower right corner of the icon's area: a triangle that points on, or three dots.
void DrawMark(HDC context, controls::RowMark mark, const PixelPlace& icon, Color ground, Color ink);
/// A star with five points in the largest square in the middle of `area`.
void DrawStar(HDC context, const PixelPlace& area, Color color);
/// A small triangle in the middle of `area`, as wide as half of its shorter side.
enum class Pointing { kUp, kDown };
void DrawArrow(HDC context, Pointing pointing, const PixelPlace& area, Color color);
/// Of a check box, in the largest square in the middle of `area`.
void DrawTick(HDC context, const PixelPlace& area, Color color);
/// Scaled to `area`.
void DrawPicture(HDC context, const Pixels& picture, const PixelPlace& area);

}  // namespace platform::win32
