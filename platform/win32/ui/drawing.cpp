#include "platform/win32/ui/drawing.h"

#include "platform/win32/base/windows_api.h"

// The second needs the first.
// clang-format off
#include <objidl.h>
#include <gdiplus.h>
// clang-format on

#include <algorithm>
#include <array>
#include <span>

namespace platform::win32 {
namespace {

using Gdiplus::PointF;

/// The library is started with the first drawing and ends with the process.
bool CanDraw() {
  static const bool started = [] {
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
  }();
  return started;
}

Gdiplus::Color ToGdiPlus(Color color) { return {255, GetRValue(color), GetGValue(color), GetBValue(color)}; }

/// All shapes are drawn in a square of 16 units.
constexpr float kUnits = 16.0F;

class Shape {
 public:
  Shape(HDC context, float left, float top, float side, Color ink)
      : graphics_(context), ink_(ToGdiPlus(ink)) {
    graphics_.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    graphics_.TranslateTransform(left, top);
    graphics_.ScaleTransform(side / kUnits, side / kUnits);
  }
  void Lines(std::span<const PointF> points, float width) {
    Gdiplus::Pen pen(ink_, width);
    pen.SetStartCap(Gdiplus::LineCapRound);
    pen.SetEndCap(Gdiplus::LineCapRound);
    pen.SetLineJoin(Gdiplus::LineJoinRound);
    graphics_.DrawLines(&pen, points.data(), static_cast<INT>(points.size()));
  }
  void Fill(std::span<const PointF> points) {
    const Gdiplus::SolidBrush brush(ink_);
    graphics_.FillPolygon(&brush, points.data(), static_cast<INT>(points.size()));
  }
  void Disc(float middle_x, float middle_y, float radius) {
    const Gdiplus::SolidBrush brush(ink_);
    graphics_.FillEllipse(&brush, middle_x - radius, middle_y - radius, 2 * radius, 2 * radius);
  }
  void Arc(float left, float top, float width, float height, float from, float across) {
    const Gdiplus::Pen pen(ink_, 1.4F);
    graphics_.DrawArc(&pen, left, top, width, height, from, across);
  }
  void SetInk(Color ink) { ink_ = ToGdiPlus(ink); }

 private:
  Gdiplus::Graphics graphics_;
  Gdiplus::Color ink_;
};

void DrawCheckMark(Shape& shape) {
  const std::array<PointF, 3> tick = {PointF(2.5F, 8.5F), PointF(6.5F, 12.5F), PointF(13.5F, 3.5F)};
  shape.Lines(tick, 2.0F);
}

void DrawCross(Shape& shape) {
  const std::array<PointF, 2> down = {PointF(3.5F, 3.5F), PointF(12.5F, 12.5F)};
  const std::array<PointF, 2> up = {PointF(12.5F, 3.5F), PointF(3.5F, 12.5F)};
  shape.Lines(down, 2.0F);
  shape.Lines(up, 2.0F);
}

void DrawLoudspeaker(Shape& shape) {
  const std::array<PointF, 6> body = {PointF(1.5F, 6),  PointF(4, 6),  PointF(8, 2.5F),
                                      PointF(8, 13.5F), PointF(4, 10), PointF(1.5F, 10)};
  shape.Fill(body);
  shape.Arc(6.5F, 5, 5, 6, -55, 110);
  shape.Arc(6, 2.5F, 8.5F, 11, -55, 110);
}

void DrawClipboard(Shape& shape) {
  // The board with its clip, and a sheet that lies over its corner.
  const std::array<PointF, 5> board = {PointF(5.5F, 13.5F), PointF(1.8F, 13.5F), PointF(1.8F, 2.8F),
                                       PointF(11.2F, 2.8F), PointF(11.2F, 5)};
  const std::array<PointF, 4> clip = {PointF(4.2F, 1.2F), PointF(8.8F, 1.2F), PointF(8.8F, 4.2F),
                                      PointF(4.2F, 4.2F)};
  const std::array<PointF, 5> sheet = {PointF(7, 6.5F), PointF(14.3F, 6.5F), PointF(14.3F, 15), PointF(7, 15),
                                       PointF(7, 6.5F)};
  shape.Lines(board, 1.3F);
  shape.Fill(clip);
  shape.Lines(sheet, 1.3F);
  for (const float line : {9.2F, 12.0F}) {
    const std::array<PointF, 2> written = {PointF(9, line), PointF(12.3F, line)};
    shape.Lines(written, 1.3F);
  }
}

}  // namespace

void DrawGlyph(HDC context, controls::Glyph glyph, const PixelPlace& area, Color color) {
  if (glyph == controls::Glyph::kNone || !CanDraw()) return;
  const float side = static_cast<float>(std::min(area.width, area.height)) * 0.62F;
  const float left = static_cast<float>(area.left) + (static_cast<float>(area.width) - side) / 2;
  const float top = static_cast<float>(area.top) + (static_cast<float>(area.height) - side) / 2;
  Shape shape(context, left, top, side, color);
  if (glyph == controls::Glyph::kCheckMark) DrawCheckMark(shape);
  if (glyph == controls::Glyph::kClose) DrawCross(shape);
  if (glyph == controls::Glyph::kLoudspeaker) DrawLoudspeaker(shape);
  if (glyph == controls::Glyph::kPaste) DrawClipboard(shape);
}

void DrawMark(HDC context, controls::RowMark mark, const PixelPlace& icon, Color ground, Color ink) {
  if (mark == controls::RowMark::kNone || !CanDraw()) return;
  const float side = static_cast<float>(std::min(icon.width, icon.height)) * 0.6F;
  Shape shape(context, static_cast<float>(icon.left + icon.width) - side,
              static_cast<float>(icon.top + icon.height) - side, side, ground);
  // A ring keeps the disc apart from icons of every colour.
  shape.Disc(8, 8, 8);
  shape.SetInk(ink);
  shape.Disc(8, 8, 6.75F);
  shape.SetInk(ground);
  if (mark == controls::RowMark::kPlaying) {
    const std::array<PointF, 3> onwards = {PointF(6, 4), PointF(12.2F, 8), PointF(6, 12)};
    shape.Fill(onwards);
  } else {
    for (const float across : {4.6F, 8.0F, 11.4F}) shape.Disc(across, 8, 1.25F);
  }
}

void DrawPicture(HDC context, const Pixels& picture, const PixelPlace& area) {
  if (picture.bytes.empty() || !CanDraw()) return;
  Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppPARGB,
                         const_cast<BYTE*>(picture.bytes.data()));
  Gdiplus::Graphics graphics(context);
  graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
  graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
  graphics.DrawImage(&bitmap, area.left, area.top, area.width, area.height);
}

}  // namespace platform::win32
