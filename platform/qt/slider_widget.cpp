#include "platform/qt/slider_widget.h"

#include <QPainter>
#include <QStyleOptionSlider>
#include <QToolTip>
#include <cmath>

#include "platform/qt/faint_frames.h"

namespace platform::qt {

SliderWidget::SliderWidget(QWidget* parent) : QSlider(Qt::Horizontal, parent) { setToolTip(ValueText()); }

QString SliderWidget::ValueText() const {
  constexpr double kPercent = 100.0;
  const double range = maximum() - minimum();
  const double part = range > 0 ? (sliderPosition() - minimum()) / range : 0.0;
  return QStringLiteral("%1 %").arg(std::lround(part * kPercent));
}

void SliderWidget::sliderChange(SliderChange change) {
  QSlider::sliderChange(change);
  if (change != SliderValueChange && change != SliderRangeChange) return;
  setToolTip(ValueText());
  if (isSliderDown()) QToolTip::showText(mapToGlobal(HandlePlace().bottomLeft()), ValueText(), this);
}

QRect SliderWidget::HandlePlace() const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
}

void SliderWidget::paintEvent(QPaintEvent* event) {
  QSlider::paintEvent(event);
  QPainter painter(this);
  OutlineWhereFaint(painter, *this, HandlePlace(), QPalette::Button);
  if (!hasFocus()) return;
  // Not every style shows it, and few show it to those who came by the mouse.
  constexpr double kCorner = 4.0;
  constexpr double kWidth = 1.5;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Highlight), kWidth));
  constexpr double kInset = kWidth / 2;
  painter.drawRoundedRect(QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset), kCorner, kCorner);
}

}  // namespace platform::qt
