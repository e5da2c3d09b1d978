#pragma once
// Shows Form2, the new-station dialog, until it is closed. Not its behaviour.

#include <QDialog>

#include "app/forms/form2.h"
#include "platform/qt/form_view.h"

namespace platform::qt {

class NewStationWindow final : public QDialog {
 public:
  NewStationWindow(app::Form2& form, const QtIcons& icons, QtMessageLoop& loop, QWidget* owner = nullptr);

  /// Blocks the other windows and returns when the form is closed, or when the program ends.
  void RunModal();

  /// The Escape key.
  void reject() override { view_.PressEscape(); }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  app::Form2& form_;
  FormView view_;
  controls::Subscription closed_;
};

}  // namespace platform::qt
