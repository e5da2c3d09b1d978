#pragma once
// A vertical bar for a level from 0 to 1, cheap enough to be set fifty times a second.
// Not a bar for the progress of work.

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

namespace platform::qt {

class PeakBar final : public QWidget {
 public:
  explicit PeakBar(QWidget* parent);

  /// Paints only when the level's height in pixels changes, only the part that changes, and twenty times a
  /// second at most.
  void SetLevel(double level);
  [[nodiscard]] double Level() const { return level_; }
  [[nodiscard]] int LevelHeight() const { return level_height_; }
  /// How often the bar has been painted so far.
  [[nodiscard]] int Paints() const { return paints_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void ShowChanges();
  [[nodiscard]] QRect Inside() const;
  [[nodiscard]] int HeightOf(double level) const;

  double level_ = 0.0;
  int level_height_ = 0;
  int paints_ = 0;
  QRect unpainted_;
  QElapsedTimer rested_;
  QBasicTimer late_;
};

}  // namespace platform::qt
