#include "platform/qt/peak_bar.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace platform::qt {
namespace {

/// Levels come every 20 ms; an eye is content with a third as many pictures, and a picture costs more than a
/// level.
constexpr int kShortestRest = 50;
/// Later than three levels, so the timer only has its turn when no further level comes.
constexpr int kLongestRest = 80;
/// How long the mark stays where it is, in milliseconds, and how far it falls in one after that.
constexpr int kMarkRests = 1000;
constexpr double kMarkFalls = 0.00025;
constexpr int kMarkThickness = 2;

struct Zone {
  double from;
  QRgb color;
};
/// From the top down.
constexpr std::array kZones = {Zone{0.9, 0xffd84030}, Zone{0.7, 0xffe0b020}, Zone{0.0, 0xff2fa84f}};

/// All bars are painted in the same beats: what goes to the screen together costs little more than one of
/// them.
class Beats {
 public:
  /// The current one's number; the first question after the rest begins the next.
  int Current() {
    if (!began_.isValid() || began_.elapsed() >= kShortestRest) {
      began_.start();
      ++number_;
    }
    return number_;
  }

 private:
  QElapsedTimer began_;
  int number_ = 0;
};

int CurrentBeat() {
  static Beats beats;
  return beats.Current();
}

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

QRect PeakBar::Part(int from_height, int to_height) const {
  const QRect inside = Inside();
  return {inside.left(), inside.bottom() + 1 - to_height, inside.width(), to_height - from_height};
}

QRect PeakBar::MarkPlace() const {
  if (mark_height_ <= level_height_) return {};
  return Part(std::max(level_height_, mark_height_ - kMarkThickness), mark_height_);
}

void PeakBar::SetLevel(double level) {
  level_ = level;
  if (level_ >= peak_) {
    peak_ = level_;
    since_peak_.start();
  }
  const int height = HeightOf(level);
  if (height == level_height_) return;
  const int former = std::exchange(level_height_, height);
  if (!isVisible()) return DropMark();
  unpainted_ |= Part(std::min(height, former), std::max(height, former));
  if (shown_in_beat_ != CurrentBeat()) return ShowChanges();
  if (!late_.isActive()) late_.start(kLongestRest, this);
}

void PeakBar::DropMark() {
  peak_ = level_;
  mark_height_ = level_height_;
}

void PeakBar::MoveMark() {
  const auto fallen = std::max<qint64>(0, since_peak_.elapsed() - kMarkRests);
  const int height = std::max(level_height_, HeightOf(peak_ - static_cast<double>(fallen) * kMarkFalls));
  if (height == mark_height_) return;
  unpainted_ |= MarkPlace();
  mark_height_ = height;
  unpainted_ |= MarkPlace();
  if (mark_height_ > level_height_) return;
  peak_ = level_;
  since_peak_.start();
}

void PeakBar::ShowChanges() {
  MoveMark();
  shown_in_beat_ = CurrentBeat();
  if (!unpainted_.isEmpty()) update(std::exchange(unpainted_, {}));
  if (mark_height_ > level_height_) {
    late_.start(kLongestRest, this);
  } else {
    late_.stop();
  }
}

void PeakBar::timerEvent(QTimerEvent* event) {
  if (event->timerId() != late_.timerId()) return QWidget::timerEvent(event);
  ShowChanges();
}

void PeakBar::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  late_.stop();
  DropMark();
}

void PeakBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  level_height_ = HeightOf(level_);
  DropMark();
}

void PeakBar::paintEvent(QPaintEvent* event) {
  ++paints_;
  QPainter painter(this);
  const QRect inside = Inside();
  const QRect wanted = event->rect();
  // The border is what is left of an area: a thin line has gaps where a pixel is no whole number of dots.
  if (!inside.contains(wanted)) painter.fillRect(rect(), palette().color(QPalette::Mid));
  const auto fill = [&](const QRect& place, const QColor& color) {
    const QRect part = place & wanted;
    if (!part.isEmpty()) painter.fillRect(part, color);
  };
  fill(Part(level_height_, inside.height()), palette().color(QPalette::Base));
  int top = level_height_;
  for (const Zone& zone : kZones) {
    const int from = std::min(HeightOf(zone.from), top);
    fill(Part(from, top), QColor::fromRgb(zone.color));
    top = from;
  }
  const auto zone = std::find_if(kZones.begin(), kZones.end(),
                                 [this](const Zone& one) { return mark_height_ > HeightOf(one.from); });
  if (zone != kZones.end()) fill(MarkPlace(), QColor::fromRgb(zone->color));
}

}  // namespace platform::qt
