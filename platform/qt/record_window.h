#pragma once
// Shows RecordForm, the window of the recording tool. Not its behaviour.

#include <QDialog>

#include "app/forms/record_form.h"
#include "platform/qt/form_view.h"

namespace platform::qt {

/// Constructed hidden. The form is closed when the user closes the window, and the window when the form is
/// closed; that ends the program's event loop too. The form outlives the window.
class RecordWindow final : public QDialog {
 public:
  RecordWindow(app::RecordForm& form, const QtIcons& icons, QtMessageLoop& loop);

  /// The Escape key.
  void reject() override { view_.PressEscape(); }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  FormView view_;
  controls::Subscription closed_;
};

}  // namespace platform::qt
