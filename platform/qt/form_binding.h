#pragma once
// Binds a form to the top-level widget that shows it: caption, inner size, closing. Not its controls.

#include <QObject>
#include <QWidget>

#include "controls/form.h"
#include "platform/qt/twip_scale.h"

namespace platform::qt {

/// The window's close button closes the form; the widget is hidden when the form is closed, not before.
class FormBinding final : public QObject {
 public:
  FormBinding(controls::Form& form, QWidget& window, const TwipScale& scale);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow();

  controls::Form& form_;
  QWidget& window_;
  const TwipScale& scale_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
