#pragma once
// The small pictures on buttons, drawn as shapes so that they follow palette and scale.
// Not the desktop's icons (platform/qt/glyph_pictures.h), and not the station icons.

#include <QColor>
#include <QRectF>

#include "controls/captioned.h"

class QPainter;

namespace platform::qt {

/// Draws the glyph into the largest square in the middle of `area`; kNone draws nothing.
void DrawGlyph(QPainter& painter, controls::Glyph glyph, const QRectF& area, const QColor& color);

}  // namespace platform::qt
