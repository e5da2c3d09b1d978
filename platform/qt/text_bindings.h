#pragma once
// Binds the controls whose text the user edits: text box, text box with arrows, combo box.
// Not labels.

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>

#include "controls/text_box.h"
#include "platform/qt/widget_binding.h"

namespace platform::qt {

class TextBoxBinding final : public WidgetBinding {
 public:
  TextBoxBinding(controls::TextBox& box, QLineEdit& widget, const TwipScale& scale);

 private:
  void Follow();
  controls::TextBox& box_;
  QLineEdit& widget_;
  bool following_ = false;
};

/// A field with two arrows that shows any text and counts from the number that it begins with.
class CountingField final : public QAbstractSpinBox {
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

class UpDownTextBoxBinding final : public WidgetBinding {
 public:
  UpDownTextBoxBinding(controls::UpDownTextBox& box, CountingField& widget, const TwipScale& scale);

 private:
  void Follow();
  controls::UpDownTextBox& box_;
  CountingField& widget_;
  bool following_ = false;
};

class ComboBoxBinding final : public WidgetBinding {
 public:
  ComboBoxBinding(controls::ComboBox& box, QComboBox& widget, const TwipScale& scale);

 private:
  void Follow();
  void FollowItems();
  void TakeTyping(const QString& text);
  void TakeUsersChoice(int index);
  [[nodiscard]] int ShownIndex() const;
  controls::ComboBox& box_;
  QComboBox& widget_;
  bool typing_ = false;
};

}  // namespace platform::qt
