#pragma once
// The sentence in the middle of a list that has no rows. Not the sentence's wording.

#include <QAbstractScrollArea>
#include <QBasicTimer>

namespace platform::qt {

/// Lies over the view's viewport while there is a text; the mouse still reaches the viewport. For a screen
/// reader the text is the list's description.
class EmptyHint final : public QWidget {
 public:
  /// A child of the view.
  explicit EmptyHint(QAbstractScrollArea& view);

  /// An empty text hides it at once. Any other is shown when the program becomes idle: a list that is
  /// reloaded is empty for a moment, which nobody should see or hear.
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
