#pragma once
// A label for texts of any length: wrapped to its width, cut with dots where its height ends, and then with
// the whole text as its tooltip. Not for the short captions beside fields.

#include <QLabel>
#include <vector>

#include "controls/captioned.h"

namespace platform::qt {

/// Text is plain text always. The text flows around `obstacle` (a picture that lies over a part of the
/// label).
class FittedLabel final : public QLabel {
 public:
  /// kText, kTitle or kNamedValues.
  explicit FittedLabel(QWidget* parent, controls::LabelLook look = controls::LabelLook::kText);

  void ShowText(const QString& text);

  /// In the label's own coordinates; an empty rectangle is none.
  void SetObstacle(const QRect& obstacle);

  /// True when the text as laid out now is shown whole.
  [[nodiscard]] bool ShowsAll() const { return shows_all_; }

  /// Where the values begin; 0 without names.
  [[nodiscard]] int ValuesLeft() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// A line of the text; without a name it takes the whole width.
  struct Line {
    QString name;
    QString value;
  };
  class Flow;

  [[nodiscard]] static QString Joined(const Line& line);
  [[nodiscard]] QFont TextFont() const;
  [[nodiscard]] QColor NameColor() const;
  [[nodiscard]] int RightEnd(int top, int line_height) const;
  void Split();
  /// Draws with a painter; without one only determines whether everything fits.
  bool LayOut(QPainter* painter) const;
  void Fit();

  const controls::LabelLook look_;
  std::vector<Line> lines_;
  QRect obstacle_;
  bool shows_all_ = true;
};

}  // namespace platform::qt
