#pragma once
// What bindings of widgets that take input share: handing over what the user did. Not what each widget takes.

#include <functional>

#include "platform/qt/message_loop.h"
#include "platform/qt/widget_binding.h"

namespace platform::qt {

/// True while a dialog stands open that takes no input to this widget. The toolkit drops such input; what was
/// handed over before the dialog opened and has its turn inside it is dropped by whoever handed it over.
[[nodiscard]] bool IsBlockedByDialog(const QWidget& widget);

class InputBinding : public WidgetBinding {
 protected:
  InputBinding(controls::Control& control, QWidget& widget, const TwipScale& scale, QtMessageLoop& loop)
      : WidgetBinding(control, widget, scale), control_(control), widget_(widget), loop_(loop) {}

  /// The program's part of what the user did, to be run from the event loop while the binding lives.
  void HandOver(std::function<void()> procedure, OnWait on_wait = OnWait::kKeepsWaiting) {
    loop_.HandOver(context_, std::move(procedure), on_wait);
  }
  /// For the use of the control that it is there for.
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
