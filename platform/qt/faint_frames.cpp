#include "platform/qt/faint_frames.h"

#include "platform/qt/readable_color.h"

namespace platform::qt {

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
  painter.setPen(Readable(Mixed(window, text, 0.5), window, text, kContrastOfParts));
  painter.drawRect(part.adjusted(0, 0, -1, -1));
}

}  // namespace platform::qt
