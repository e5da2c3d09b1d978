#include "platform/qt/widget_set.h"

#include "platform/qt/check_box_widget.h"

namespace platform::qt {

template <typename Binding, typename Widget, typename Control, typename... More>
Widget& WidgetSet::Bind(Control& control, Widget* widget, const char* name, More&... more) {
  widget->setObjectName(QLatin1String(name));
  bindings_.push_back(std::make_unique<Binding>(control, *widget, scale_, more...));
  return *widget;
}

QLabel& WidgetSet::Add(controls::Label& label, QWidget& parent, const char* name, QWidget* field) {
  auto* widget = new QLabel(&parent);
  widget->setBuddy(field);
  return Bind<LabelBinding>(label, widget, name);
}

FittedLabel& WidgetSet::AddFitted(controls::Label& label, QWidget& parent, const char* name) {
  return Bind<FittedLabelBinding>(label, new FittedLabel(&parent), name);
}

StatusStrip& WidgetSet::AddStrip(controls::Label& label, QWidget& parent, const char* name) {
  return Bind<StatusStripBinding>(label, new StatusStrip(&parent), name);
}

QGroupBox& WidgetSet::Add(controls::Frame& frame, QWidget& parent, const char* name, FrameLook look) {
  return Bind<FrameBinding, QGroupBox>(frame, new FrameWidget(look, &parent), name);
}

CommandButtonWidget& WidgetSet::Add(controls::CommandButton& button, QWidget& parent, const char* name) {
  return Bind<CommandButtonBinding>(button, new CommandButtonWidget(&parent), name, loop_);
}

QCheckBox& WidgetSet::Add(controls::CheckBox& box, QWidget& parent, const char* name) {
  return Bind<CheckBoxBinding, QCheckBox>(box, new CheckBoxWidget(&parent), name, loop_);
}

QLineEdit& WidgetSet::Add(controls::TextBox& box, QWidget& parent, const char* name) {
  return Bind<TextBoxBinding>(box, new QLineEdit(&parent), name, loop_);
}

CountingField& WidgetSet::Add(controls::UpDownTextBox& box, QWidget& parent, const char* name) {
  return Bind<UpDownTextBoxBinding>(box, new CountingField(&parent), name, loop_);
}

QComboBox& WidgetSet::Add(controls::ComboBox& box, QWidget& parent, const char* name) {
  return Bind<ComboBoxBinding>(box, new QComboBox(&parent), name, loop_);
}

PeakBar& WidgetSet::Add(controls::ProgressBar& bar, QWidget& parent, const char* name) {
  return Bind<ProgressBarBinding>(bar, new PeakBar(&parent), name);
}

QSlider& WidgetSet::Add(controls::ScrollBar& bar, QWidget& parent, const char* name) {
  return Bind<ScrollBarBinding>(bar, new QSlider(Qt::Horizontal, &parent), name, loop_);
}

PictureBox& WidgetSet::Add(controls::Image& image, QWidget& parent, const char* name) {
  return Bind<ImageBinding>(image, new PictureBox(&parent), name, icons_);
}

ReportView& WidgetSet::Add(controls::ListView& list, QWidget& parent, const char* name) {
  return Bind<ListBinding>(list, new ReportView(&parent), name, icons_, loop_);
}

void WidgetSet::Add(controls::Timer& timer) {
  timers_.push_back(std::make_unique<TimerBinding>(timer, loop_));
}

void WidgetSet::FollowScale() {
  for (const auto& binding : bindings_) binding->FollowScale();
}

}  // namespace platform::qt
