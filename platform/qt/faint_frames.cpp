#include "platform/qt/faint_frames.h"

#include <algorithm>

#include "platform/qt/readable_color.h"

namespace platform::qt {

void DrawFrame(QPainter& painter, const QRect& part, const QColor& color) {
  const QTransform to_screen = painter.deviceTransform();
  const QRect outer = to_screen.mapRect(QRectF(part)).toRect();
  const int width = std::max(1, static_cast<int>(to_screen.m11()));
  painter.save();
  painter.setTransform(to_screen.inverted(), true);
  const QRegion lines = QRegion(outer) - outer.adjusted(width, width, -width, -width);
  for (const QRect& line : lines) painter.fillRect(line, color);
  painter.restore();
}

void OutlineWhereFaint(QPainter& painter, const QWidget& widget, const QRect& part,
                       QPalette::ColorRole ground) {
  constexpr double kVisible = 1.1;
  constexpr int kUsualShade = 140;
  const QPalette& palette = widget.palette();
  const QColor window = palette.color(QPalette::Window);
  const bool has_shade = ContrastOf(window.darker(kUsualShade), window) >= kVisible;
  const bool has_ground = ContrastOf(palette.color(ground), window) >= kVisible;
  if (has_shade || has_ground) return;
  const QColor text = palette.color(QPalette::WindowText);
  DrawFrame(painter, part, Readable(Mixed(window, text, 0.5), window, text, kContrastOfParts));
}

}  // namespace platform::qt
