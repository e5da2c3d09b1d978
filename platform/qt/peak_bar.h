#pragma once
// A vertical bar for a level from 0 to 1, cheap enough to be set fifty times a second.
// Not a bar for the progress of work.

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

namespace platform::qt {

/// Green, yellow and red from the bottom up, and a mark at the latest peak, which rests for a second and then
/// falls slowly.
class PeakBar final : public QWidget {
 public:
  explicit PeakBar(QWidget* parent);

  /// Paints only when the level's height in pixels changes, only the part that changes, and twenty times a
  /// second at most, together with the other bars. The mark moves along with these pictures. Without them it
  /// has a timer until it has come down to the level, so nothing wakes up while nothing moves.
  void SetLevel(double level);
  [[nodiscard]] double Level() const { return level_; }
  [[nodiscard]] int LevelHeight() const { return level_height_; }
  /// The upper end of the mark; the level's height when it rests on the level.
  [[nodiscard]] int MarkHeight() const { return mark_height_; }
  /// How often the bar has been painted so far.
  [[nodiscard]] int Paints() const { return paints_; }
  /// Whether a timer is to wake the bar.
  [[nodiscard]] bool Wakes() const { return late_.isActive(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void ShowChanges();
  void DropMark();
  void MoveMark();
  [[nodiscard]] QRect Inside() const;
  [[nodiscard]] int HeightOf(double level) const;
  /// Of the inside, from one height to another.
  [[nodiscard]] QRect Part(int from_height, int to_height) const;
  [[nodiscard]] QRect MarkPlace() const;

  double level_ = 0.0;
  int level_height_ = 0;
  double peak_ = 0.0;
  int mark_height_ = 0;
  int paints_ = 0;
  QRect unpainted_;
  int shown_in_beat_ = 0;
  QElapsedTimer since_peak_;
  QBasicTimer late_;
};

}  // namespace platform::qt
