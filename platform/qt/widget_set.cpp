#include "platform/qt/widget_set.h"

#include <type_traits>

#include "platform/qt/check_box_widget.h"
#include "platform/qt/faint_frames.h"
#include "platform/qt/frame_widget.h"
#include "platform/qt/key_sequence.h"
#include "platform/qt/text.h"
#include "platform/qt/text_bindings.h"
#include "platform/qt/value_bindings.h"

namespace platform::qt {

WidgetSet::WidgetSet(const app::Inventory& inventory, QWidget& window, const TwipScale& scale,
                     const QtIcons& icons, QtMessageLoop& loop)
    : scale_(scale), icons_(icons), loop_(loop) {
  for (const app::FormControl& entry : inventory) {
    QWidget& parent = entry.container == nullptr ? window : *widgets_.at(entry.container);
    std::visit(
        [&](auto* control) {
          if constexpr (std::is_same_v<decltype(control), controls::Timer*>) {
            AddTimer(*control);
          } else {
            Add(*control, Make(*control, parent), entry);
          }
        },
        entry.control);
  }
  SetTabOrder();
}

void WidgetSet::Add(controls::Control& control, QWidget* widget, const app::FormControl& entry) {
  widgets_[&control] = widget;
  if (widget == nullptr) return;
  const app::Use& use = entry.use;
  widget->setObjectName(QLatin1String(entry.name));
  if (use.named_by != nullptr) NameFor(*widget, *use.named_by);
  if (!use.accessible_name.empty()) widget->setAccessibleName(ToQt(use.accessible_name));
  if (control.ToolTip().empty() && !use.hint.empty()) {
    widget->setToolTip(PlainToolTip(ToQt(use.hint) + InBrackets(use.key)));
  }
  if (auto* button = qobject_cast<QPushButton*>(widget)) {
    // A dialog's other buttons do not become the one for Enter when they have the keyboard.
    button->setAutoDefault(use.key == controls::kEnterKey || use.key == controls::kEscapeKey);
    const auto* as_control = app::As<controls::CommandButton>(entry);
    const bool is_main = as_control != nullptr && as_control->Role() == controls::ButtonRole::kMain;
    button->setDefault(is_main || use.key == controls::kEnterKey);
  }
  if ((widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus) tab_order_.push_back(widget);
}

void WidgetSet::NameFor(QWidget& widget, controls::Captioned& named_by) {
  const auto label = captions_.find(&named_by);
  if (label != captions_.end()) return label->second->Name(widget);
  const auto follow = [&widget, &named_by] {
    const QString name = ToQt(named_by.Caption());
    if (widget.accessibleName() != name) widget.setAccessibleName(name);
  };
  follow();
  subscriptions_ += named_by.Changed.Subscribe(follow);
}

void WidgetSet::SetTabOrder() {
  for (std::size_t next = 1; next < tab_order_.size(); ++next) {
    QWidget::setTabOrder(tab_order_[next - 1], tab_order_[next]);
  }
}

QWidget* WidgetSet::Of(const controls::Control& control) const { return widgets_.at(&control); }

QWidget* WidgetSet::FirstForKeyboard(const QWidget& within) const {
  for (QWidget* widget : tab_order_) {
    const bool inside = widget == &within || within.isAncestorOf(widget);
    const QWidget* const window = widget->window();
    if (inside && widget->isVisibleTo(window) && widget->isEnabledTo(window)) return widget;
  }
  return nullptr;
}

template <typename Binding, typename Control, typename Widget, typename... More>
Binding& WidgetSet::Bind(Control& control, Widget* widget, More&... more) {
  auto binding = std::make_unique<Binding>(control, *widget, scale_, more...);
  Binding& bound = *binding;
  bindings_.push_back(std::move(binding));
  return bound;
}

QWidget* WidgetSet::Make(controls::Frame& frame, QWidget& parent) {
  auto* widget = new FrameWidget(frame.Look(), &parent);
  Bind<FrameBinding>(frame, widget);
  return widget;
}

QWidget* WidgetSet::Make(controls::Label& label, QWidget& parent) {
  switch (label.Look()) {
    case controls::LabelLook::kStatusLine: {
      auto* strip = new StatusStrip(&parent);
      Bind<StatusStripBinding>(label, strip);
      return strip;
    }
    case controls::LabelLook::kText:
    case controls::LabelLook::kTitle:
    case controls::LabelLook::kNamedValues: {
      auto* text = new FittedLabel(&parent, label.Look());
      Bind<FittedLabelBinding>(label, text);
      texts_.emplace_back(&label, text);
      return text;
    }
    case controls::LabelLook::kCaption:
    case controls::LabelLook::kRightCaption:
      break;
  }
  auto* caption = new QLabel(&parent);
  captions_[&label] = &Bind<LabelBinding>(label, caption);
  return caption;
}

QWidget* WidgetSet::Make(controls::CommandButton& button, QWidget& parent) {
  if (button.Look() == controls::ButtonLook::kNone) return nullptr;
  auto* widget = new CommandButtonWidget(&parent);
  widget->setFlat(button.Look() == controls::ButtonLook::kFlat);
  Bind<CommandButtonBinding>(button, widget, loop_);
  return widget;
}

QWidget* WidgetSet::Make(controls::CheckBox& box, QWidget& parent) {
  if (box.Look() == controls::CheckLook::kNone) return nullptr;
  auto* widget = new CheckBoxWidget(&parent);
  Bind<CheckBoxBinding>(box, widget, loop_);
  return widget;
}

QWidget* WidgetSet::Make(controls::TextBox& box, QWidget& parent) {
  auto* widget = new Outlined<QLineEdit>(&parent);
  Bind<TextBoxBinding>(box, widget, loop_);
  return widget;
}

QWidget* WidgetSet::Make(controls::UpDownTextBox& box, QWidget& parent) {
  auto* widget = new Outlined<CountingField>(&parent);
  Bind<UpDownTextBoxBinding>(box, widget, loop_);
  return widget;
}

QWidget* WidgetSet::Make(controls::ComboBox& box, QWidget& parent) {
  auto* widget = new Outlined<QComboBox>(&parent);
  Bind<ComboBoxBinding>(box, widget, loop_);
  return widget;
}

QWidget* WidgetSet::Make(controls::ProgressBar& bar, QWidget& parent) {
  auto* widget = new PeakBar(&parent);
  Bind<ProgressBarBinding>(bar, widget);
  return widget;
}

QWidget* WidgetSet::Make(controls::ScrollBar& bar, QWidget& parent) {
  auto* widget = new SliderWidget(&parent);
  Bind<ScrollBarBinding>(bar, widget, loop_);
  return widget;
}

QWidget* WidgetSet::Make(controls::Image& image, QWidget& parent) {
  auto* widget = new PictureBox(&parent);
  Bind<ImageBinding>(image, widget, icons_);
  return widget;
}

QWidget* WidgetSet::Make(controls::ListView& list, QWidget& parent) {
  auto* widget = new ReportView(&parent);
  lists_.push_back(&Bind<ListBinding>(list, widget, icons_, loop_));
  return widget;
}

void WidgetSet::AddTimer(controls::Timer& timer) {
  timers_.push_back(std::make_unique<TimerBinding>(timer, loop_));
}

void WidgetSet::FollowScale() {
  for (const auto& binding : bindings_) binding->FollowScale();
}

}  // namespace platform::qt
