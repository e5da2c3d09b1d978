#pragma once
// A form inside a window of the toolkit: what the program's windows share. Not the window itself.

#include <QEvent>
#include <QWidget>

#include "app/forms/form_control.h"
#include "platform/qt/form_binding.h"
#include "platform/qt/form_keys.h"
#include "platform/qt/texts_round_pictures.h"
#include "platform/qt/widget_set.h"

namespace platform::qt {

/// Walks the inventory when it is constructed; form and inventory outlive it.
class FormView {
 public:
  FormView(controls::Form& form, const app::Inventory& inventory, QWidget& window, const QtIcons& icons,
           QtMessageLoop& loop);

  /// The window's size for the form's inner size.
  [[nodiscard]] QSize WindowSize() const;
  /// The first visible control in the tab order takes the keyboard.
  void FocusFirst();
  /// For the Escape key in a dialog.
  void PressEscape() { keys_.PressEscape(); }
  /// To be called with each of the window's change events: another font means another scale.
  void FollowChange(const QEvent& event);

 private:
  void LimitSize();

  controls::Form& form_;
  QWidget& window_;
  TwipScale scale_;
  WidgetSet widgets_;
  TextsRoundPictures texts_;
  FormKeys keys_;
  FormBinding binding_;
};

}  // namespace platform::qt
