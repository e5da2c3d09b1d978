#pragma once
// The small pictures on buttons as strokes and areas, which a front end draws in the colour it needs.
// Not pixels, and not the desktop's own icons.

#include <vector>

#include "controls/captioned.h"

namespace platform::front {

/// All shapes are in a square of so many units; x goes to the right, y down.
inline constexpr double kGlyphUnits = 16.0;

struct GlyphPoint {
  double x = 0.0;
  double y = 0.0;
};

/// One part of a glyph. Lines have round ends and corners.
struct GlyphPart {
  enum class Kind {
    kLine,     ///< through the points
    kOutline,  ///< a line that returns to its first point
    kArea,     ///< a filled polygon
    kCircle,   ///< a line around the first point
    kDisc,     ///< filled
    kArc,      ///< part of an ellipse around the first point, symmetrical about its right end
  };
  Kind kind = Kind::kLine;
  std::vector<GlyphPoint> points;
  double width = 1.5;             ///< of the line
  GlyphPoint radius = {0, 0};     ///< of a circle, disc or arc
  double degrees_each_way = 0.0;  ///< of an arc, above and below its right end
};

/// Empty for kNone.
[[nodiscard]] std::vector<GlyphPart> PartsOf(controls::Glyph glyph);

}  // namespace platform::front
