#pragma once
// The small pictures on buttons, drawn as shapes so that they follow palette and scale.
// Not the station icons.

#include <QColor>
#include <QRect>

#include "controls/captioned.h"

class QPainter;

namespace platform::qt {

/// Draws the glyph in the middle of `area`; kNone draws nothing.
void DrawGlyph(QPainter& painter, controls::Glyph glyph, const QRect& area, const QColor& color);

}  // namespace platform::qt
