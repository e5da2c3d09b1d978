#include "platform/qt/check_box_widget.h"

#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>
#include <algorithm>
#include <cmath>

namespace platform::qt {
namespace {

constexpr double kWanted = 3.0;

/// Relative luminance and contrast by WCAG 2.1.
double Luminance(const QColor& color) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

/// Whether each side of the box is seen, a quarter of its width deep.
bool StandsOut(const QImage& box, const QColor& ground) {
  const QPoint middle = box.rect().center();
  const QPoint last = box.rect().bottomRight();
  const auto seen = [&](const QPoint& place) { return Contrast(box.pixelColor(place), ground) >= kWanted; };
  bool left = false;
  bool right = false;
  bool top = false;
  bool bottom = false;
  for (int depth = 0; depth < box.width() / 4; ++depth) {
    left = left || seen({depth, middle.y()});
    right = right || seen({last.x() - depth, middle.y()});
    top = top || seen({middle.x(), depth});
    bottom = bottom || seen({middle.x(), last.y() - depth});
  }
  return left && right && top && bottom;
}

/// Between the two colours, no nearer to the text's than it has to be.
QColor FrameColor(const QColor& window, const QColor& text) {
  constexpr int kSteps = 10;
  for (int step = kSteps / 2; step < kSteps; ++step) {
    const auto mixed = [&](int from, int to) { return from + (to - from) * step / kSteps; };
    const QColor color(mixed(window.red(), text.red()), mixed(window.green(), text.green()),
                       mixed(window.blue(), text.blue()));
    if (Contrast(color, window) > kWanted) return color;
  }
  return text;
}

}  // namespace

CheckBoxWidget::CheckBoxWidget(QWidget* parent) : QCheckBox(parent) {}

void CheckBoxWidget::paintEvent(QPaintEvent* event) {
  QCheckBox::paintEvent(event);
  QStyleOptionButton option;
  initStyleOption(&option);
  option.rect = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
  if (!isEnabled() || !NeedsFrame(option)) return;
  QPainter painter(this);
  painter.setPen(FrameColor(palette().color(QPalette::Window), palette().color(QPalette::WindowText)));
  painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}

bool CheckBoxWidget::NeedsFrame(QStyleOptionButton box) {
  if (measured_style_ == style() && measured_palette_ == palette().cacheKey()) return needs_frame_;
  measured_style_ = style();
  measured_palette_ = palette().cacheKey();
  const QColor window = palette().color(QPalette::Window);
  box.rect.moveTo(0, 0);
  box.state = QStyle::State_Enabled | QStyle::State_Off;
  QImage picture(box.rect.size(), QImage::Format_ARGB32_Premultiplied);
  picture.fill(window);
  {
    QPainter painter(&picture);
    style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, this);
  }
  needs_frame_ = !StandsOut(picture, window);
  return needs_frame_;
}

}  // namespace platform::qt
