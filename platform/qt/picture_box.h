#pragma once
// Shows one picture scaled to the widget's place. Not for icons in lists or on buttons.

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace platform::qt {

/// The picture has round corners, and a margin on its right and below, as the texts of a panel have; its
/// place reaches to the panel's edge.
class PictureBox final : public QWidget {
 public:
  explicit PictureBox(QWidget* parent);

  /// A null image shows nothing.
  void SetPicture(const QImage& picture);
  [[nodiscard]] const QImage& Picture() const { return picture_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int Margin() const;
  [[nodiscard]] QRect PicturePlace() const;

  QImage picture_;
  QPixmap scaled_;  // the picture at the size in which it was painted last
};

}  // namespace platform::qt
