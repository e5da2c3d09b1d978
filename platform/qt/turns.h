#pragma once
// Wishes from outside the window, in the order of its input. Not the event procedures themselves
// (platform/qt/message_loop.h).

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "platform/qt/message_loop.h"
#include "ports/turns.h"

namespace platform::qt {

/// Nothing runs before the main window is set and after it is gone.
class QtTurns final : public Turns {
 public:
  explicit QtTurns(QtMessageLoop& loop) : loop_(loop) {}

  void SetMainWindow(QWidget* window) { window_ = window; }
  void HandOver(std::function<void()> procedure, TurnOnWait on_wait, TurnWhenBlocked when_blocked) override;

 private:
  QtMessageLoop& loop_;
  QPointer<QWidget> window_;
};

}  // namespace platform::qt
