#pragma once
// The strip at a window's lower edge that shows the current state in one sentence. Not bound to a label by
// itself, and not the sentence.

#include <QBasicTimer>
#include <QLabel>
#include <QWidget>

#include "controls/event.h"
#include "platform/front/announced_text.h"

namespace platform::qt {

/// One line; a sentence that is too long for it ends in dots and is shown whole as the tooltip. Takes no
/// keyboard focus.
///
/// For a screen reader this is a status bar that contains a notification: it speaks the bar on demand, and
/// the notification by itself after what it is currently speaking, without leaving the control that has the
/// focus. The toolkit's announcements, which are made for this, come with Qt 6.8.
class StatusStrip final : public QWidget {
 public:
  explicit StatusStrip(QWidget* parent);

  void ShowText(const QString& text);
  /// The whole text.
  [[nodiscard]] const QString& WholeText() const { return text_; }

  /// Raised with each announcement to screen readers.
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
  front::AnnouncedText announced_;
  QBasicTimer rest_;
};

}  // namespace platform::qt
