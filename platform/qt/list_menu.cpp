#include "platform/qt/list_menu.h"

#include <QMenu>
#include <functional>

#include "platform/qt/input_binding.h"
#include "platform/qt/key_sequence.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

using app::MenuEntry;

/// The menu of one list while it is made.
class ListMenuMaker {
 public:
  ListMenuMaker(ReportView& list, QtMessageLoop& loop) : list_(list), loop_(loop), menu_(new QMenu(&list)) {
    menu_->setObjectName(QStringLiteral("list_menu"));
    menu_->setAttribute(Qt::WA_DeleteOnClose);
  }

  void Add(controls::CommandButton& button, const app::Use& use) {
    switch (use.menu) {
      case MenuEntry::kNone:
        return;
      case MenuEntry::kClickBelowALine:
        menu_->addSeparator();
        [[fallthrough]];
      case MenuEntry::kClick:
        return AddClick(button, ToQt(use.key));
      case MenuEntry::kOpenRow:
        return AddForRow(button, Qt::Key_Return, [&list = list_] { list.EnterPressed.Raise(); });
      case MenuEntry::kDeleteRow:
        return AddForRow(button, Qt::Key_Delete, [&list = list_] { list.DeletePressed.Raise(); });
    }
  }
  void Show(const QPoint& place) { menu_->popup(place); }

 private:
  QAction& AddEntry(const controls::CommandButton& button, const QKeySequence& keys,
                    const std::function<void()>& action) {
    // Keys after a tab are only shown; they are bound elsewhere.
    QAction* entry = menu_->addAction(WithoutMnemonics(button.Caption()) + QLatin1Char('\t') +
                                      keys.toString(QKeySequence::NativeText));
    QObject::connect(entry, &QAction::triggered, &list_, action);
    return *entry;
  }
  void AddForRow(const controls::CommandButton& button, const QKeySequence& keys,
                 const std::function<void()>& action) {
    AddEntry(button, keys, action).setEnabled(list_.SelectedRow().has_value());
  }
  void AddClick(controls::CommandButton& button, const QKeySequence& keys) {
    if (!button.Visible()) return;
    QAction& entry = AddEntry(button, keys, [&list = list_, &loop = loop_, &button] {
      loop.HandOver(list, [&list, &button] {
        if (!IsBlockedByDialog(list)) button.Click();
      });
    });
    entry.setEnabled(button.Enabled());
  }

  ReportView& list_;
  QtMessageLoop& loop_;
  QMenu* menu_;  // which ends itself
};

}  // namespace

void ShowListMenu(const app::Inventory& inventory, ReportView& list, QtMessageLoop& loop,
                  const QPoint& place) {
  ListMenuMaker menu(list, loop);
  for (const app::FormControl& entry : inventory) {
    auto* button = app::As<controls::CommandButton>(entry);
    if (button != nullptr) menu.Add(*button, entry.use);
  }
  menu.Show(place);
}

}  // namespace platform::qt
