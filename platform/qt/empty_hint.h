#pragma once
// The sentence in the middle of a list that has no rows. Not the sentence's words.

#include <QAbstractScrollArea>
#include <QBasicTimer>

namespace platform::qt {

/// Lies over the view's viewport while there is a text; the mouse reaches the viewport all the same. For
/// whoever hears the list the text is its description.
class EmptyHint final : public QWidget {
 public:
  /// A child of the view.
  explicit EmptyHint(QAbstractScrollArea& view);

  /// An empty text hides it at once. Any other is shown when the program comes to rest: a list that is loaded
  /// anew is empty for a moment, which nobody is to see or hear.
  void ShowText(const QString& text);

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void Show();

  QAbstractScrollArea& view_;
  QString text_;
  QBasicTimer rest_;
};

}  // namespace platform::qt
