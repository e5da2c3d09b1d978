#pragma once
// What every widget shares with its control: place, visibility, whether it takes input, tooltip, focus.
// Not the properties of one kind of control; those are in the bindings that derive from this.

#include <QWidget>

#include "controls/control.h"
#include "platform/front/following.h"
#include "platform/qt/twip_scale.h"
#include "ports/text.h"

namespace platform::qt {

/// Follows one control with one widget. The widget belongs to its parent widget, the control to its form;
/// both outlive the binding.
class WidgetBinding {
 public:
  WidgetBinding(controls::Control& control, QWidget& widget, const TwipScale& scale);
  virtual ~WidgetBinding() = default;
  WidgetBinding(const WidgetBinding&) = delete;
  WidgetBinding& operator=(const WidgetBinding&) = delete;

  /// Applies the place again; to be called when the scale has changed.
  virtual void FollowScale() { FollowPlace(); }

 protected:
  [[nodiscard]] const TwipScale& Scale() const { return scale_; }

  controls::Subscriptions subscriptions_;
  QObject context_;  // ends the connections to the widget's signals

 private:
  void Follow();
  void FollowPlace();

  controls::Control& control_;
  QWidget& widget_;
  const TwipScale& scale_;
  Text shown_tool_tip_;
};

using front::Following;

}  // namespace platform::qt
