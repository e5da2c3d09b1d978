#include "platform/qt/form_keys.h"

#include <QKeyEvent>

#include "platform/qt/input_binding.h"
#include "platform/qt/key_sequence.h"
#include "platform/qt/list_menu.h"

namespace platform::qt {

FormKeys::FormKeys(const app::Inventory& inventory, QWidget& window, const WidgetSet& widgets,
                   QtMessageLoop& loop)
    : inventory_(inventory), window_(window), widgets_(widgets), loop_(loop) {
  for (const app::FormControl& entry : inventory_) {
    if (entry.use.key.with_control || entry.use.key == controls::kHelpKey) Bind(entry);
    if (entry.use.enter_clicks == nullptr) continue;
    QWidget* const field = widgets_.Of(*app::As<controls::Control>(entry));
    entered_[field] = entry.use.enter_clicks;
    field->installEventFilter(this);
  }
  for (ListBinding* list : widgets_.Lists()) {
    subscriptions_ += list->View().MenuWanted.Subscribe(
        [this, list](const QPoint& place) { ShowListMenu(inventory_, *list, loop_, place); });
  }
}

void FormKeys::Bind(const app::FormControl& entry) {
  auto* shortcut = new QShortcut(ToQt(entry.use.key), &window_);
  shortcut->setAutoRepeat(false);
  QObject::connect(shortcut, &QShortcut::activated, &window_, [this, &entry] {
    if (auto* button = app::As<controls::CommandButton>(entry)) {
      return Press(*button, entry.use.key_while_hidden);
    }
    QWidget* const goal = widgets_.FirstForKeyboard(*widgets_.Of(*app::As<controls::Control>(entry)));
    if (goal != nullptr) goal->setFocus(Qt::ShortcutFocusReason);
  });
}

void FormKeys::Press(controls::CommandButton& button, app::KeyWhileHidden while_hidden) {
  loop_.HandOver(window_, [this, &button, while_hidden] {
    if (IsBlockedByDialog(window_)) return;
    if (button.Visible() || while_hidden == app::KeyWhileHidden::kWorks) button.Click();
  });
}

bool FormKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool plain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (!plain || (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter)) return false;
  // A key that is held down applies once. The field itself has no use for it.
  if (!key.isAutoRepeat()) Press(*entered_.at(watched), app::KeyWhileHidden::kRests);
  return true;
}

void FormKeys::PressEscape() {
  for (const app::FormControl& entry : inventory_) {
    auto* button = app::As<controls::CommandButton>(entry);
    if (button == nullptr || entry.use.key != controls::kEscapeKey) continue;
    return Press(*button, entry.use.key_while_hidden);
  }
}

}  // namespace platform::qt
