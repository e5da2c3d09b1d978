#pragma once
// Shows Form2, the new-station dialog, until it is closed. Not its behaviour.

#include <QDialog>

#include "app/forms/form2.h"
#include "platform/qt/form_binding.h"
#include "platform/qt/widget_set.h"

namespace platform::qt {

class NewStationWindow final : public QDialog {
 public:
  NewStationWindow(app::Form2& form, const QtIcons& icons, QtMessageLoop& loop, QWidget* owner = nullptr);

  /// Blocks the other windows and returns when the form is closed, or when the program ends.
  void RunModal();

  /// The Escape key: the form's cancel button.
  void reject() override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Build();

  app::Form2& form_;
  QtMessageLoop& loop_;
  TwipScale scale_;
  WidgetSet widgets_;
  FormBinding form_binding_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
