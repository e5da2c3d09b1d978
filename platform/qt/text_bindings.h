#pragma once
// Binds the controls whose text the user edits: text box, text box with arrows, combo box.
// Not labels.

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>

#include "controls/text_box.h"
#include "platform/front/typed_text.h"
#include "platform/qt/input_binding.h"

namespace platform::qt {

class TextBoxBinding final : public InputBinding {
 public:
  TextBoxBinding(controls::TextBox& box, QLineEdit& widget, const TwipScale& scale, QtMessageLoop& loop);

 private:
  void Follow();
  void TakeTyping(const QString& text);
  controls::TextBox& box_;
  QLineEdit& widget_;
  front::TypedText typed_;
  bool following_ = false;
};

/// A field with two arrows that shows any text and counts from the number that it begins with.
class CountingField : public QAbstractSpinBox {
 public:
  explicit CountingField(QWidget* parent);
  [[nodiscard]] QLineEdit& Edit() const { return *lineEdit(); }

  void stepBy(int steps) override;
  QValidator::State validate(QString& input, int& position) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  [[nodiscard]] StepEnabled stepEnabled() const override;

 private:
  [[nodiscard]] int Number() const;
};

class UpDownTextBoxBinding final : public InputBinding {
 public:
  UpDownTextBoxBinding(controls::UpDownTextBox& box, CountingField& widget, const TwipScale& scale,
                       QtMessageLoop& loop);

 private:
  void Follow();
  void TakeTyping(const QString& text);
  controls::UpDownTextBox& box_;
  CountingField& widget_;
  front::TypedText typed_;
  bool following_ = false;
};

class ComboBoxBinding final : public InputBinding {
 public:
  ComboBoxBinding(controls::ComboBox& box, QComboBox& widget, const TwipScale& scale, QtMessageLoop& loop);

 private:
  void Follow();
  void FollowItems();
  void TakeTyping(const QString& text);
  void TakeUsersChoice(int index);
  void Choose(int index);
  void Show(const Text& text, int index);
  [[nodiscard]] int ShownIndex() const;
  [[nodiscard]] int IndexOf(const Text& text) const;
  controls::ComboBox& box_;
  QComboBox& widget_;
  front::TypedText typed_;
  int inputs_to_come_ = 0;  // which the widget already shows
  bool typing_ = false;
};

}  // namespace platform::qt
