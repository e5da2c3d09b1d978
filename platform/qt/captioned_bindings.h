#pragma once
// Binds the controls that carry a caption to their widgets: label, frame, command button, check box.
// Not the bindings of controls whose text the user edits (platform/qt/text_bindings.h).

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>

#include "controls/captioned.h"
#include "platform/qt/command_button_widget.h"
#include "platform/qt/fitted_label.h"
#include "platform/qt/input_binding.h"
#include "platform/qt/status_strip.h"

namespace platform::qt {

/// A short fixed caption, usually beside a field.
class LabelBinding final : public WidgetBinding {
 public:
  LabelBinding(controls::Label& label, QLabel& widget, const TwipScale& scale);

  /// The label names this field for screen readers.
  void Name(QWidget& field);

 private:
  void Follow();
  controls::Label& label_;
  QLabel& widget_;
};

/// A text that may be longer than its place.
class FittedLabelBinding final : public WidgetBinding {
 public:
  FittedLabelBinding(controls::Label& label, FittedLabel& widget, const TwipScale& scale);

 private:
  void Follow();
  controls::Label& label_;
  FittedLabel& widget_;
};

/// A sentence on the strip at the window's lower edge.
class StatusStripBinding final : public WidgetBinding {
 public:
  StatusStripBinding(controls::Label& label, StatusStrip& widget, const TwipScale& scale);

 private:
  void Follow();
  controls::Label& label_;
  StatusStrip& widget_;
};

class FrameBinding final : public WidgetBinding {
 public:
  FrameBinding(controls::Frame& frame, QGroupBox& widget, const TwipScale& scale);

 private:
  void Follow();
  controls::Frame& frame_;
  QGroupBox& widget_;
};

class CommandButtonBinding final : public InputBinding {
 public:
  CommandButtonBinding(controls::CommandButton& button, CommandButtonWidget& widget, const TwipScale& scale,
                       QtMessageLoop& loop);
  ~CommandButtonBinding() override { widget_.on_context_click = nullptr; }

 private:
  void Follow();
  controls::CommandButton& button_;
  CommandButtonWidget& widget_;
};

class CheckBoxBinding final : public InputBinding {
 public:
  CheckBoxBinding(controls::CheckBox& box, QCheckBox& widget, const TwipScale& scale, QtMessageLoop& loop);

 private:
  void Follow();
  void TakeUsersChoice(bool checked);
  controls::CheckBox& box_;
  QCheckBox& widget_;
  int choices_to_come_ = 0;  // which the widget already shows
  bool following_ = false;
};

}  // namespace platform::qt
