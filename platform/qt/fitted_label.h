#pragma once
// A label for texts of any length: wrapped to its width, cut with dots where its height ends, and then with
// the whole text as its tooltip. Not for the short captions beside fields.

#include <QLabel>

namespace platform::qt {

/// Text is plain text always. The text flows around `obstacle` (a picture that lies over a part of the
/// label).
class FittedLabel final : public QLabel {
 public:
  explicit FittedLabel(QWidget* parent);

  void ShowText(const QString& text);

  /// In the label's own coordinates; an empty rectangle is none.
  void SetObstacle(const QRect& obstacle);

  /// True when the text as laid out now is shown whole.
  [[nodiscard]] bool ShowsAll() const { return shows_all_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// Draws with a painter; without one only determines whether everything fits.
  bool LayOut(QPainter* painter) const;
  void Fit();

  QRect obstacle_;
  bool shows_all_ = true;
};

}  // namespace platform::qt
