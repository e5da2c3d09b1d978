#pragma once
// Makes the widgets of one window and binds each to its control. Not the window itself, and not where the
// places come from.

#include <QString>
#include <memory>
#include <vector>

#include "platform/qt/captioned_bindings.h"
#include "platform/qt/frame_widget.h"
#include "platform/qt/list_binding.h"
#include "platform/qt/text_bindings.h"
#include "platform/qt/timer_binding.h"
#include "platform/qt/value_bindings.h"

namespace platform::qt {

/// Every widget takes the control's name as its object name. Widgets belong to their parent widget; the
/// set, which holds the bindings, must end before the window does.
class WidgetSet {
 public:
  WidgetSet(const TwipScale& scale, const QtIcons& icons, QtMessageLoop& loop)
      : scale_(scale), icons_(icons), loop_(loop) {}
  WidgetSet(const WidgetSet&) = delete;
  WidgetSet& operator=(const WidgetSet&) = delete;

  /// A caption for `field`, which it names for screen readers; null when it names none.
  QLabel& Add(controls::Label& label, QWidget& parent, const char* name, QWidget* field = nullptr);
  /// A label for texts of any length.
  FittedLabel& AddFitted(controls::Label& label, QWidget& parent, const char* name);
  /// A label as the strip at the window's lower edge.
  StatusStrip& AddStrip(controls::Label& label, QWidget& parent, const char* name);
  QGroupBox& Add(controls::Frame& frame, QWidget& parent, const char* name, FrameLook look);
  CommandButtonWidget& Add(controls::CommandButton& button, QWidget& parent, const char* name);
  QCheckBox& Add(controls::CheckBox& box, QWidget& parent, const char* name);
  QLineEdit& Add(controls::TextBox& box, QWidget& parent, const char* name);
  CountingField& Add(controls::UpDownTextBox& box, QWidget& parent, const char* name);
  QComboBox& Add(controls::ComboBox& box, QWidget& parent, const char* name);
  PeakBar& Add(controls::ProgressBar& bar, QWidget& parent, const char* name);
  QSlider& Add(controls::ScrollBar& bar, QWidget& parent, const char* name);
  PictureBox& Add(controls::Image& image, QWidget& parent, const char* name);
  ReportView& Add(controls::ListView& list, QWidget& parent, const char* name);
  void Add(controls::Timer& timer);

  /// All places anew; to be called when the scale has changed.
  void FollowScale();

 private:
  template <typename Binding, typename Widget, typename Control, typename... More>
  Widget& Bind(Control& control, Widget* widget, const char* name, More&... more);

  const TwipScale& scale_;
  const QtIcons& icons_;
  QtMessageLoop& loop_;
  std::vector<std::unique_ptr<WidgetBinding>> bindings_;
  std::vector<std::unique_ptr<TimerBinding>> timers_;
};

}  // namespace platform::qt
