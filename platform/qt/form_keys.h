#pragma once
// The keys and the lists' menus that a form's inventory names. Not what the controls do, and not the keys
// that a kind of widget knows by itself.

#include <QObject>
#include <QShortcut>
#include <QWidget>
#include <map>

#include "app/forms/form_control.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/widget_set.h"

namespace platform::qt {

class FormKeys final : public QObject {
 public:
  /// The window is that of the widgets; all outlive the object.
  FormKeys(const app::Inventory& inventory, QWidget& window, const WidgetSet& widgets, QtMessageLoop& loop);

  /// For a dialog: clicks the button that has the Escape key, if there is one.
  void PressEscape();

  /// Enter in a field.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Bind(const app::FormControl& entry);
  void Press(controls::CommandButton& button, app::KeyWhileHidden while_hidden);

  const app::Inventory& inventory_;
  QWidget& window_;
  const WidgetSet& widgets_;
  QtMessageLoop& loop_;
  std::map<const QObject*, controls::CommandButton*> entered_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
