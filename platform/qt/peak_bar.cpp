#include "platform/qt/peak_bar.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace platform::qt {
namespace {

/// Levels come every 20 ms; an eye is content with a third as many pictures, and a picture costs more than a
/// level.
constexpr int kShortestRest = 50;
/// Later than three levels, so the timer only has its turn when no further level comes.
constexpr int kLongestRest = 80;
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
  if (!isVisible()) return;
  unpainted_ |= QRect(inside.left(), inside.bottom() + 1 - upper, inside.width(), upper - lower);
  if (!rested_.isValid() || rested_.elapsed() >= kShortestRest) return ShowChanges();
  if (!late_.isActive()) late_.start(kLongestRest, this);
}

void PeakBar::ShowChanges() {
  late_.stop();
  rested_.start();
  update(std::exchange(unpainted_, {}));
}

void PeakBar::timerEvent(QTimerEvent* event) {
  if (event->timerId() != late_.timerId()) return QWidget::timerEvent(event);
  ShowChanges();
}

void PeakBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  level_height_ = HeightOf(level_);
}

void PeakBar::paintEvent(QPaintEvent* event) {
  ++paints_;
  QPainter painter(this);
  const QRect inside = Inside();
  const QRect wanted = event->rect();
  // The border is what is left of an area: a thin line has gaps where a pixel is no whole number of dots.
  if (!inside.contains(wanted)) painter.fillRect(rect(), palette().color(QPalette::Mid));
  // From the top down: what no zone fills is empty.
  const struct {
    double from;
    QColor color;
  } zones[] = {{kVeryLoud, QColor::fromRgb(kVeryLoudColor)},
               {kLoud, QColor::fromRgb(kLoudColor)},
               {0.0, QColor::fromRgb(kQuietColor)}};
  const auto fill = [&](int from_height, int to_height, const QColor& color) {
    const QRect zone(inside.left(), inside.bottom() + 1 - to_height, inside.width(), to_height - from_height);
    const QRect part = zone & wanted;
    if (!part.isEmpty()) painter.fillRect(part, color);
  };
  fill(level_height_, inside.height(), palette().color(QPalette::Base));
  int top = level_height_;
  for (const auto& zone : zones) {
    const int from = std::min(HeightOf(zone.from), top);
    fill(from, top, zone.color);
    top = from;
  }
}

}  // namespace platform::qt
