#include "platform/win32/ui/drawing.h"

#include "platform/win32/base/windows_api.h"

// The second needs the first.
// clang-format off
#include <objidl.h>
#include <gdiplus.h>
// clang-format on

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

#include "platform/front/glyph_shapes.h"
#include "platform/win32/ui/dark_mode.h"

namespace platform::win32 {
namespace {

using Gdiplus::PointF;

Gdiplus::Color ToGdiPlus(Color color) { return {255, GetRValue(color), GetGValue(color), GetBValue(color)}; }

/// All shapes are drawn in a square of so many units.
constexpr auto kUnits = static_cast<float>(front::kGlyphUnits);

class Shape {
 public:
  Shape(HDC context, float left, float top, float side, Color ink)
      : graphics_(context), ink_(ToGdiPlus(ink)) {
    graphics_.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    graphics_.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    graphics_.TranslateTransform(left, top);
    graphics_.ScaleTransform(side / kUnits, side / kUnits);
  }
  void Draw(const front::GlyphPart& part);
  void Fill(std::span<const PointF> points) {
    const Gdiplus::SolidBrush brush(ink_);
    graphics_.FillPolygon(&brush, points.data(), static_cast<INT>(points.size()));
  }
  void Disc(float middle_x, float middle_y, float radius) {
    const Gdiplus::SolidBrush brush(ink_);
    graphics_.FillEllipse(&brush, middle_x - radius, middle_y - radius, 2 * radius, 2 * radius);
  }
  void SetInk(Color ink) { ink_ = ToGdiPlus(ink); }

 private:
  Gdiplus::Graphics graphics_;
  Gdiplus::Color ink_;
};

void Shape::Draw(const front::GlyphPart& part) {
  using Kind = front::GlyphPart::Kind;
  Gdiplus::Pen pen(ink_, static_cast<float>(part.width));
  pen.SetStartCap(Gdiplus::LineCapRound);
  pen.SetEndCap(Gdiplus::LineCapRound);
  pen.SetLineJoin(Gdiplus::LineJoinRound);
  std::vector<PointF> points;
  for (const auto& [x, y] : part.points) points.emplace_back(static_cast<float>(x), static_cast<float>(y));
  const auto count = static_cast<INT>(points.size());
  const PointF radius(static_cast<float>(part.radius.x), static_cast<float>(part.radius.y));
  const Gdiplus::RectF around(points[0].X - radius.X, points[0].Y - radius.Y, 2 * radius.X, 2 * radius.Y);
  const auto angle = static_cast<float>(part.degrees_each_way);
  switch (part.kind) {
    case Kind::kLine:
      graphics_.DrawLines(&pen, points.data(), count);
      return;
    case Kind::kOutline:
      graphics_.DrawPolygon(&pen, points.data(), count);
      return;
    case Kind::kArea:
      return Fill(points);
    case Kind::kCircle:
      graphics_.DrawEllipse(&pen, around);
      return;
    case Kind::kDisc:
      return Disc(points[0].X, points[0].Y, radius.X);
    case Kind::kArc:
      graphics_.DrawArc(&pen, around, -angle, 2 * angle);
      return;
  }
}

struct Square {
  float left;
  float top;
  float side;
};

Square LargestIn(const PixelPlace& area) {
  const auto side = static_cast<float>(std::min(area.width, area.height));
  return {static_cast<float>(area.left) + (static_cast<float>(area.width) - side) / 2,
          static_cast<float>(area.top) + (static_cast<float>(area.height) - side) / 2, side};
}

}  // namespace

bool CanDraw() {
  static const bool started = [] {
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
  }();
  return started;
}

Color ToSystem(const front::Rgb& color) { return RGB(color.red, color.green, color.blue); }

front::Rgb FromSystem(Color color) { return {GetRValue(color), GetGValue(color), GetBValue(color)}; }

void FillArea(HDC context, const tagRECT& area, Color color) {
  ::SetDCBrushColor(context, color);
  ::FillRect(context, &area, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
}

void FrameArea(HDC context, const tagRECT& area, Color color) {
  ::SetDCBrushColor(context, color);
  ::FrameRect(context, &area, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
}

void DrawFocus(HDC context, const tagRECT& area) {
  if (ShownBrightness() == Brightness::kDark) {
    // The context's colours are inverted too, and those of a light text would leave nothing to be seen.
    ::SetTextColor(context, RGB(0, 0, 0));
    ::SetBkColor(context, RGB(255, 255, 255));
  }
  ::DrawFocusRect(context, &area);
}

void DrawGlyph(HDC context, controls::Glyph glyph, const PixelPlace& area, Color color) {
  if (glyph == controls::Glyph::kNone || !CanDraw()) return;
  const Square square = LargestIn(area);
  Shape shape(context, square.left, square.top, square.side, color);
  for (const front::GlyphPart& part : front::PartsOf(glyph)) shape.Draw(part);
}

void DrawStar(HDC context, const PixelPlace& area, Color color) {
  if (!CanDraw()) return;
  const Square square = LargestIn(area);
  constexpr std::size_t kCorners = 10;
  constexpr double kRadius = front::kGlyphUnits / 2;
  std::array<PointF, kCorners> corners;
  for (std::size_t corner = 0; corner < kCorners; ++corner) {
    const double angle = static_cast<double>(corner) * std::numbers::pi / (kCorners / 2.0);
    const double reach = kRadius * (corner % 2 == 0 ? 1.0 : 0.42);
    corners[corner] = PointF(static_cast<float>(kRadius + reach * std::sin(angle)),
                             static_cast<float>(kRadius * 1.05 - reach * std::cos(angle)));
  }
  Shape(context, square.left, square.top, square.side, color).Fill(corners);
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

void DrawArrow(HDC context, Pointing pointing, const PixelPlace& area, Color color) {
  if (!CanDraw()) return;
  const Square square = LargestIn(area);
  const float base = pointing == Pointing::kUp ? 10.2F : 5.8F;
  const float tip = pointing == Pointing::kUp ? 5.8F : 10.2F;
  const std::array<PointF, 3> corners = {PointF(4, base), PointF(12, base), PointF(8, tip)};
  Shape(context, square.left, square.top, square.side, color).Fill(corners);
}

void DrawTick(HDC context, const PixelPlace& area, Color color) {
  if (!CanDraw()) return;
  const Square square = LargestIn(area);
  front::GlyphPart tick;
  tick.kind = front::GlyphPart::Kind::kLine;
  tick.points = {{3.4, 8.2}, {6.6, 11.4}, {12.8, 4.8}};
  tick.width = 2.0;
  Shape(context, square.left, square.top, square.side, color).Draw(tick);
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
