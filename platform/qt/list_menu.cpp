#include "platform/qt/list_menu.h"

#include <QKeySequence>
#include <QMenu>
#include <functional>

#include "platform/qt/input_binding.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

/// The menu of one list while it is made.
class ListMenu {
 public:
  ListMenu(ReportView& list, QtMessageLoop& loop) : list_(list), loop_(loop), menu_(new QMenu(&list)) {
    menu_->setObjectName(QStringLiteral("list_menu"));
    menu_->setAttribute(Qt::WA_DeleteOnClose);
  }

  QAction& Add(const controls::CommandButton& button, const QKeySequence& keys,
               const std::function<void()>& action) {
    // Keys that stand behind a tab are shown only; they are bound elsewhere.
    QAction* entry = menu_->addAction(WithoutMnemonics(button.Caption()) + QLatin1Char('\t') +
                                      keys.toString(QKeySequence::NativeText));
    QObject::connect(entry, &QAction::triggered, &list_, action);
    return *entry;
  }
  /// An entry that stands for a button, unless that is hidden.
  void AddButton(controls::CommandButton& button, const QKeySequence& keys) {
    if (!button.Visible()) return;
    QAction& entry = Add(button, keys, [&list = list_, &loop = loop_, &button] {
      loop.HandOver(list, [&list, &button] {
        if (!IsBlockedByDialog(list)) button.Click();
      });
    });
    entry.setEnabled(button.Enabled());
  }
  void AddSeparator() { menu_->addSeparator(); }
  void Show(const QPoint& place) { menu_->popup(place); }

 private:
  ReportView& list_;
  QtMessageLoop& loop_;
  QMenu* menu_;  // which ends itself
};

}  // namespace

void ShowListMenu(app::Form1& form, ReportView& list, QtMessageLoop& loop, const QPoint& place) {
  ListMenu menu(list, loop);
  const bool selected = list.SelectedRow().has_value();
  menu.Add(form.Command1, Qt::Key_Return, [&list] { list.EnterPressed.Raise(); }).setEnabled(selected);
  menu.Add(form.Command8[3], Qt::Key_Delete, [&list] { list.DeletePressed.Raise(); }).setEnabled(selected);
  menu.AddButton(form.UndoDelete, QKeySequence::Undo);
  menu.AddSeparator();
  menu.AddButton(form.CommandButton1, QKeySequence::Save);
  menu.AddButton(form.CommandButton2, QKeySequence::New);
  menu.Show(place);
}

}  // namespace platform::qt
