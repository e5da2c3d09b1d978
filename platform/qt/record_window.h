#pragma once
// Shows RecordForm, the window of the recording tool. Not its behaviour.

#include <QDialog>

#include "app/forms/record_form.h"
#include "platform/qt/form_binding.h"
#include "platform/qt/widget_set.h"

namespace platform::qt {

/// Made hidden. The form is closed when the user closes the window, and the window when the form is closed;
/// that ends the program's event loop too. The form outlives the window.
class RecordWindow final : public QDialog {
 public:
  RecordWindow(app::RecordForm& form, const QtIcons& icons, QtMessageLoop& loop);

  /// The Escape key: nothing, because it would end a recording by accident.
  void reject() override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Build();

  app::RecordForm& form_;
  TwipScale scale_;
  WidgetSet widgets_;
  FormBinding form_binding_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
