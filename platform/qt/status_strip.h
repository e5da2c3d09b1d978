#pragma once
// The strip at a window's lower edge that says in one sentence how things stand. Not bound to a label by
// itself, and not the sentence.

#include <QBasicTimer>
#include <QLabel>
#include <QWidget>

#include "controls/event.h"

namespace platform::qt {

/// One line; what is too long for it ends in dots and is shown whole as the tooltip. Takes no keyboard.
///
/// For whoever hears the window this is a status bar that holds a notification: a screen reader speaks the
/// bar on demand, and its notification by itself after what it is speaking just then, without leaving the
/// control that has the keyboard. The toolkit's announcements, which are made for this, come with Qt 6.8.
/// A sentence that differs from the one announced before in its numbers only (a countdown, a percentage) is
/// announced once it has rested.
class StatusStrip final : public QWidget {
 public:
  explicit StatusStrip(QWidget* parent);

  void ShowText(const QString& text);
  /// The whole text.
  [[nodiscard]] const QString& WholeText() const { return text_; }

  /// Comes with each announcement to screen readers.
  controls::Event<QString> Announced;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void Fit();
  void Announce();

  QLabel* line_;
  QString text_;
  QString announced_;
  QBasicTimer rest_;
};

}  // namespace platform::qt
