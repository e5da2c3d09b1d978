#pragma once
// What bindings of widgets that take input share: queueing user input. Not what each widget takes.

#include <functional>

#include "platform/qt/message_loop.h"
#include "platform/qt/widget_binding.h"

namespace platform::qt {

/// True while an open dialog blocks input to this widget. The toolkit drops such input; what was queued
/// before the dialog opened and has its turn inside it is dropped by the binding that queued it.
[[nodiscard]] bool IsBlockedByDialog(const QWidget& widget);

class InputBinding : public WidgetBinding {
 protected:
  InputBinding(controls::Control& control, QWidget& widget, const TwipScale& scale, QtMessageLoop& loop)
      : WidgetBinding(control, widget, scale), control_(control), widget_(widget), loop_(loop) {}

  /// The program's reaction to user input, to be run from the event loop while the binding lives.
  void HandOver(std::function<void()> procedure, OnWait on_wait = OnWait::kKeepsWaiting) {
    loop_.HandOver(context_, std::move(procedure), on_wait);
  }
  /// For the main use of the control.
  [[nodiscard]] OnWait UseOnWait() const {
    return control_.EndsWaiting() ? OnWait::kEndsWait : OnWait::kKeepsWaiting;
  }
  [[nodiscard]] bool IsBlocked() const { return IsBlockedByDialog(widget_); }

 private:
  controls::Control& control_;
  QWidget& widget_;
  QtMessageLoop& loop_;
};

}  // namespace platform::qt
