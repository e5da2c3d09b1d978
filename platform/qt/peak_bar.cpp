#include "platform/qt/peak_bar.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace platform::qt {
namespace {

constexpr double kLoud = 0.7;
constexpr double kVeryLoud = 0.9;
constexpr QRgb kQuietColor = 0xff2fa84f;
constexpr QRgb kLoudColor = 0xffe0b020;
constexpr QRgb kVeryLoudColor = 0xffd84030;

}  // namespace

PeakBar::PeakBar(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::NoFocus);
  // It paints all of its place, so nothing below it has to be painted with it fifty times a second.
  setAttribute(Qt::WA_OpaquePaintEvent);
}

QRect PeakBar::Inside() const { return rect().adjusted(1, 1, -1, -1); }

int PeakBar::HeightOf(double level) const {
  return static_cast<int>(std::lround(std::clamp(level, 0.0, 1.0) * std::max(0, Inside().height())));
}

void PeakBar::SetLevel(double level) {
  level_ = level;
  const int height = HeightOf(level);
  if (height == level_height_) return;
  const QRect inside = Inside();
  const int upper = std::max(height, level_height_);
  const int lower = std::min(height, level_height_);
  level_height_ = height;
  update(inside.left(), inside.bottom() + 1 - upper, inside.width(), upper - lower);
}

void PeakBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  level_height_ = HeightOf(level_);
}

void PeakBar::paintEvent(QPaintEvent* event) {
  ++paints_;
  QPainter painter(this);
  painter.setClipRect(event->rect());
  const QRect inside = Inside();
  // The border is what is left of an area: a thin line has gaps where a pixel is no whole number of dots.
  painter.fillRect(rect(), palette().color(QPalette::Mid));
  painter.fillRect(inside, palette().color(QPalette::Base));

  const struct {
    double from, to;
    QRgb color;
  } zones[] = {{0.0, kLoud, kQuietColor}, {kLoud, kVeryLoud, kLoudColor}, {kVeryLoud, 1.0, kVeryLoudColor}};
  for (const auto& zone : zones) {
    const int bottom = HeightOf(zone.from);
    const int top = std::min(HeightOf(zone.to), level_height_);
    if (top <= bottom) break;
    painter.fillRect(inside.left(), inside.bottom() + 1 - top, inside.width(), top - bottom,
                     QColor::fromRgb(zone.color));
  }
}

}  // namespace platform::qt
