#include "platform/qt/text_bindings.h"

#include <algorithm>

#include "platform/qt/text.h"

namespace platform::qt {
namespace {

/// Shows a text that came from the program, from its beginning.
void ShowText(QLineEdit& edit, TextView text) {
  const QString shown = ToQt(text);
  if (edit.text() == shown) return;
  edit.setText(shown);
  edit.setCursorPosition(0);
}

}  // namespace

TextBoxBinding::TextBoxBinding(controls::TextBox& box, QLineEdit& widget, const TwipScale& scale,
                               QtMessageLoop& loop)
    : InputBinding(box, widget, scale, loop), box_(box), widget_(widget), typed_(box) {
  subscriptions_ += box.Changed.Subscribe([this] { Follow(); });
  QObject::connect(&widget_, &QLineEdit::textChanged, &context_, [this](const QString& text) {
    if (!following_) TakeTyping(text);
  });
  Follow();
}

void TextBoxBinding::TakeTyping(const QString& text) {
  HandOver([this, typed = FromQt(text), basis = typed_.Basis()] {
    typed_.Take(basis, typed, [&] { box_.SetText(typed); });
  });
}

void TextBoxBinding::Follow() {
  if (!typed_.ProgramWrote()) return;
  const Following guard(following_);
  ShowText(widget_, box_.GetText());
}

CountingField::CountingField(QWidget* parent) : QAbstractSpinBox(parent) {
  lineEdit()->setInputMethodHints(Qt::ImhDigitsOnly);
}

int CountingField::Number() const {
  const QString text = lineEdit()->text().trimmed();
  qsizetype digits = 0;
  while (digits < text.size() && text.at(digits).isDigit()) ++digits;
  bool ok = false;
  const int number = text.left(digits).toInt(&ok);
  if (!ok) return digits == 0 ? controls::UpDownTextBox::kMinimum : controls::UpDownTextBox::kMaximum;
  return std::clamp(number, controls::UpDownTextBox::kMinimum, controls::UpDownTextBox::kMaximum);
}

void CountingField::stepBy(int steps) {
  const int number =
      std::clamp(Number() + steps, controls::UpDownTextBox::kMinimum, controls::UpDownTextBox::kMaximum);
  lineEdit()->setText(QString::number(number));
  lineEdit()->selectAll();
}

QValidator::State CountingField::validate(QString& input, int& /*position*/) const {
  const bool number = std::all_of(input.begin(), input.end(), [](QChar unit) { return unit.isDigit(); });
  return number ? QValidator::Acceptable : QValidator::Invalid;
}

QSize CountingField::sizeHint() const {
  return minimumSizeHint() + QSize(fontMetrics().horizontalAdvance(QStringLiteral("00")), 0);
}

QSize CountingField::minimumSizeHint() const {
  constexpr int kFrameAndArrows = 30;
  return {fontMetrics().horizontalAdvance(QStringLiteral("000")) + kFrameAndArrows,
          lineEdit()->sizeHint().height()};
}

QAbstractSpinBox::StepEnabled CountingField::stepEnabled() const {
  StepEnabled enabled = StepNone;
  if (Number() < controls::UpDownTextBox::kMaximum) enabled |= StepUpEnabled;
  if (Number() > controls::UpDownTextBox::kMinimum) enabled |= StepDownEnabled;
  return enabled;
}

UpDownTextBoxBinding::UpDownTextBoxBinding(controls::UpDownTextBox& box, CountingField& widget,
                                           const TwipScale& scale, QtMessageLoop& loop)
    : InputBinding(box, widget, scale, loop), box_(box), widget_(widget), typed_(box) {
  subscriptions_ += box.Changed.Subscribe([this] { Follow(); });
  QObject::connect(&widget_.Edit(), &QLineEdit::textChanged, &context_, [this](const QString& text) {
    widget_.update();  // the arrows show whether there is a next number
    if (!following_) TakeTyping(text);
  });
  Follow();
}

void UpDownTextBoxBinding::TakeTyping(const QString& text) {
  HandOver([this, typed = FromQt(text), basis = typed_.Basis()] {
    typed_.Take(basis, typed, [&] { box_.SetText(typed); });
  });
}

void UpDownTextBoxBinding::Follow() {
  if (!typed_.ProgramWrote()) return;
  const Following guard(following_);
  ShowText(widget_.Edit(), box_.GetText());
}

ComboBoxBinding::ComboBoxBinding(controls::ComboBox& box, QComboBox& widget, const TwipScale& scale,
                                 QtMessageLoop& loop)
    : InputBinding(box, widget, scale, loop), box_(box), widget_(widget), typed_(box) {
  widget_.setEditable(true);
  widget_.setInsertPolicy(QComboBox::NoInsert);
  constexpr int kShownWithoutScrolling = 20;
  widget_.setMaxVisibleItems(kShownWithoutScrolling);
  // A completion would write a genre that the user did not type.
  widget_.setCompleter(nullptr);
  subscriptions_ += box.Changed.Subscribe([this] { Follow(); });
  QObject::connect(&widget_, &QComboBox::activated, &context_, [this](int index) { TakeUsersChoice(index); });
  QObject::connect(widget_.lineEdit(), &QLineEdit::textEdited, &context_,
                   [this](const QString& text) { TakeTyping(text); });
  Follow();
}

void ComboBoxBinding::TakeTyping(const QString& text) {
  Show(FromQt(text), IndexOf(FromQt(text)));
  ++inputs_to_come_;
  HandOver([this, typed = FromQt(text), basis = typed_.Basis()] {
    --inputs_to_come_;
    typed_.Take(basis, typed, [&] {
      // The control loses its chosen entry before it has the new text; what lies between is not shown.
      const Following guard(typing_);
      box_.Type(typed);
    });
    Follow();
  });
}

void ComboBoxBinding::TakeUsersChoice(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= box_.Items().size()) return;
  ++inputs_to_come_;
  HandOver([this, index] {
    --inputs_to_come_;
    if (!IsBlocked()) Choose(index);
    Follow();
  });
}

void ComboBoxBinding::Choose(int index) {
  const Text item = box_.Items()[static_cast<std::size_t>(index)];
  typed_.Take(typed_.Basis(), item, [&] {
    // Choosing the entry that was chosen last counts too, because the field may contain another text by now.
    if (box_.ListIndex() == index) box_.Type(item);
    box_.SetListIndex(index);
  });
}

int ComboBoxBinding::ShownIndex() const {
  const int chosen = box_.ListIndex();
  return chosen >= 0 ? chosen : IndexOf(box_.GetText());
}

int ComboBoxBinding::IndexOf(const Text& text) const {
  const auto& items = box_.Items();
  const auto found = std::find(items.begin(), items.end(), text);
  return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

void ComboBoxBinding::Follow() {
  if (typing_) return;
  FollowItems();
  if (!typed_.ProgramWrote() && inputs_to_come_ > 0) return;
  Show(box_.GetText(), ShownIndex());
}

void ComboBoxBinding::Show(const Text& text, int index) {
  // The widget's own index always belongs to its text: otherwise it would choose the entry of that text by
  // itself as soon as the field loses the focus.
  QLineEdit& edit = *widget_.lineEdit();
  const bool typed = edit.text() == ToQt(text);
  const int cursor = edit.cursorPosition();
  if (widget_.currentIndex() != index) widget_.setCurrentIndex(index);
  ShowText(edit, text);
  if (typed && edit.cursorPosition() != cursor) edit.setCursorPosition(cursor);
}

void ComboBoxBinding::FollowItems() {
  const auto& items = box_.Items();
  for (auto index = static_cast<std::size_t>(widget_.count()); index < items.size(); ++index) {
    widget_.addItem(CellText(items[index]));
  }
}

}  // namespace platform::qt
