#pragma once
// The pictures of glyphs: the desktop's icons where its theme has them, otherwise drawn ones. Not where on a
// button they are.

#include <QColor>
#include <QPixmap>

#include "controls/captioned.h"

namespace platform::qt {

struct GlyphColors {
  QColor ink;     ///< of the text beside it
  QColor ground;  ///< what it is painted on
  friend bool operator==(const GlyphColors&, const GlyphColors&) = default;
};

/// The glyph on a transparent square of `side` points with `dots` pixels to a point. An icon of the desktop's
/// theme that is all of one colour, as symbolic icons are, is taken for its shape and painted in the ink; one
/// of several colours keeps them, unless it does not stand out from the ground. The glyph is drawn then, and
/// when the theme has no such icon.
[[nodiscard]] QPixmap GlyphPicture(controls::Glyph glyph, int side, double dots, const GlyphColors& colors);

}  // namespace platform::qt
