#include "platform/qt/frame_widget.h"

#include <QPainter>

namespace platform::qt {

using controls::FrameLook;

FrameWidget::FrameWidget(FrameLook look, QWidget* parent) : QGroupBox(parent), look_(look) {
  if (look_ == FrameLook::kPanel) setBackgroundRole(QPalette::Base);
}

void FrameWidget::paintEvent(QPaintEvent* event) {
  if (look_ == FrameLook::kTitled) QGroupBox::paintEvent(event);
  if (look_ != FrameLook::kPanel) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kPanelCorner, kPanelCorner);
}

}  // namespace platform::qt
