#include "platform/qt/captioned_bindings.h"

#include "platform/qt/text.h"

namespace platform::qt {

LabelBinding::LabelBinding(controls::Label& label, QLabel& widget, const TwipScale& scale)
    : WidgetBinding(label, widget, scale), label_(label), widget_(widget) {
  widget_.setTextFormat(Qt::PlainText);
  if (label.Look() == controls::LabelLook::kRightCaption) {
    widget_.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  }
  subscriptions_ += label.Changed.Subscribe([this] { Follow(); });
  Follow();
}

void LabelBinding::Name(QWidget& field) {
  widget_.setBuddy(&field);
  Follow();
}

void LabelBinding::Follow() {
  // A label interprets "&" as the mark of a shortcut only beside a field.
  const QString text =
      widget_.buddy() != nullptr ? WithoutMnemonics(label_.Caption()) : ToQt(label_.Caption());
  if (widget_.text() != text) widget_.setText(text);
}

FittedLabelBinding::FittedLabelBinding(controls::Label& label, FittedLabel& widget, const TwipScale& scale)
    : WidgetBinding(label, widget, scale), label_(label), widget_(widget) {
  subscriptions_ += label.Changed.Subscribe([this] { Follow(); });
  Follow();
}

void FittedLabelBinding::Follow() {
  const QString text = ToQt(label_.Caption());
  if (widget_.text() != text) widget_.ShowText(text);
}

StatusStripBinding::StatusStripBinding(controls::Label& label, StatusStrip& widget, const TwipScale& scale)
    : WidgetBinding(label, widget, scale), label_(label), widget_(widget) {
  subscriptions_ += label.Changed.Subscribe([this] { Follow(); });
  Follow();
}

void StatusStripBinding::Follow() { widget_.ShowText(CellText(label_.Caption())); }

FrameBinding::FrameBinding(controls::Frame& frame, QGroupBox& widget, const TwipScale& scale)
    : WidgetBinding(frame, widget, scale), frame_(frame), widget_(widget) {
  subscriptions_ += frame.Changed.Subscribe([this] { Follow(); });
  Follow();
}

void FrameBinding::Follow() {
  const QString title = WithoutMnemonics(frame_.Caption());
  if (widget_.title() != title) widget_.setTitle(title);
}

CommandButtonBinding::CommandButtonBinding(controls::CommandButton& button, CommandButtonWidget& widget,
                                           const TwipScale& scale, QtMessageLoop& loop)
    : InputBinding(button, widget, scale, loop), button_(button), widget_(widget) {
  subscriptions_ += button.Changed.Subscribe([this] { Follow(); });
  QObject::connect(&widget_, &QPushButton::clicked, &context_, [this] {
    HandOver(
        [this] {
          if (!IsBlocked()) button_.Click();
        },
        UseOnWait());
  });
  widget_.on_context_click = [this] {
    HandOver([this] {
      if (!IsBlocked()) button_.ContextClick();
    });
  };
  Follow();
  const bool drawn = button.GetGlyph() != controls::Glyph::kNone &&
                     button.PlaceOfGlyph() == controls::GlyphPlace::kInsteadOfCaption;
  if (drawn && !button.ToolTip().empty()) widget_.setAccessibleName(ToQt(button.ToolTip()));
}

void CommandButtonBinding::Follow() {
  const QString text = WithoutMnemonics(button_.Caption());
  if (widget_.text() != text) widget_.setText(text);
  widget_.SetGlyph(button_.GetGlyph(), button_.PlaceOfGlyph());
  widget_.SetRole(button_.Role());
}

CheckBoxBinding::CheckBoxBinding(controls::CheckBox& box, QCheckBox& widget, const TwipScale& scale,
                                 QtMessageLoop& loop)
    : InputBinding(box, widget, scale, loop), box_(box), widget_(widget) {
  subscriptions_ += box.Changed.Subscribe([this] { Follow(); });
  QObject::connect(&widget_, &QCheckBox::toggled, &context_, [this](bool checked) {
    if (!following_) TakeUsersChoice(checked);
  });
  Follow();
}

void CheckBoxBinding::Follow() {
  const QString text = WithoutMnemonics(box_.Caption());
  if (widget_.text() != text) widget_.setText(text);
  if (choices_to_come_ > 0 || widget_.isChecked() == box_.Checked()) return;
  const Following guard(following_);
  widget_.setChecked(box_.Checked());
}

void CheckBoxBinding::TakeUsersChoice(bool checked) {
  ++choices_to_come_;
  HandOver([this, checked] {
    --choices_to_come_;
    // The program may have come first.
    if (!IsBlocked() && checked != box_.Checked()) box_.Click();
    Follow();
  });
}

}  // namespace platform::qt
