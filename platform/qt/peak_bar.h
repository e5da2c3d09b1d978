#pragma once
// A vertical bar for a level from 0 to 1, cheap enough to be set fifty times a second.
// Not a bar for the progress of work.

#include <QWidget>

namespace platform::qt {

class PeakBar final : public QWidget {
 public:
  explicit PeakBar(QWidget* parent);

  /// Paints only when the level's height in pixels changes, and only the part that changes.
  void SetLevel(double level);
  [[nodiscard]] double Level() const { return level_; }
  [[nodiscard]] int LevelHeight() const { return level_height_; }
  /// How often the bar has been painted so far.
  [[nodiscard]] int Paints() const { return paints_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] QRect Inside() const;
  [[nodiscard]] int HeightOf(double level) const;

  double level_ = 0.0;
  int level_height_ = 0;
  int paints_ = 0;
};

}  // namespace platform::qt
