#include "platform/qt/widget_binding.h"

#include "platform/front/shown_place.h"
#include "platform/qt/text.h"

namespace platform::qt {

WidgetBinding::WidgetBinding(controls::Control& control, QWidget& widget, const TwipScale& scale)
    : control_(control), widget_(widget), scale_(scale) {
  subscriptions_ += control.Changed.Subscribe([this] { Follow(); });
  subscriptions_ += control.FocusWanted.Subscribe([this] { widget_.setFocus(Qt::OtherFocusReason); });
  Follow();
}

void WidgetBinding::Follow() {
  FollowPlace();
  if (widget_.isHidden() == control_.Visible()) widget_.setVisible(control_.Visible());
  if (widget_.testAttribute(Qt::WA_ForceDisabled) == control_.Enabled()) {
    widget_.setEnabled(control_.Enabled());
  }
  if (shown_tool_tip_ != control_.ToolTip()) {
    shown_tool_tip_ = control_.ToolTip();
    widget_.setToolTip(PlainToolTip(ToQt(shown_tool_tip_)));
  }
}

void WidgetBinding::FollowPlace() {
  const QRect place = scale_.Pixels(front::BelowUpperEdge(control_.GetPlace()));
  if (widget_.geometry() != place) widget_.setGeometry(place);
}

}  // namespace platform::qt
