#include "platform/qt/list_menu.h"

#include <QKeySequence>
#include <QMenu>
#include <functional>
#include <utility>

#include "platform/qt/text.h"

namespace platform::qt {
namespace {

QAction& AddEntry(QMenu& menu, const controls::CommandButton& button, const QKeySequence& keys,
                  std::function<void()> action) {
  // Keys that stand behind a tab are shown only; they are bound elsewhere.
  QAction* entry = menu.addAction(WithoutMnemonics(button.Caption()) + QLatin1Char('\t') +
                                  keys.toString(QKeySequence::NativeText));
  // What an entry starts may take long; by then the menu is gone.
  QObject::connect(entry, &QAction::triggered, menu.parent(), std::move(action), Qt::QueuedConnection);
  return *entry;
}

}  // namespace

void ShowListMenu(app::Form1& form, ReportView& list, const QPoint& place) {
  auto* menu = new QMenu(&list);
  menu->setObjectName(QStringLiteral("list_menu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const bool selected = list.SelectedRow().has_value();
  AddEntry(*menu, form.Command1, Qt::Key_Return, [&list] { list.EnterPressed.Raise(); }).setEnabled(selected);
  AddEntry(*menu, form.Command8[3], Qt::Key_Delete, [&list] {
    list.DeletePressed.Raise();
  }).setEnabled(selected);
  AddEntry(*menu, form.UndoDelete, QKeySequence::Undo, [&form] {
    form.UndoDelete.Click();
  }).setEnabled(form.UndoDelete.Enabled());
  menu->addSeparator();
  if (form.CommandButton1.Visible()) {
    AddEntry(*menu, form.CommandButton1, QKeySequence::Save, [&form] { form.CommandButton1.Click(); });
  }
  if (form.CommandButton2.Visible()) {
    AddEntry(*menu, form.CommandButton2, QKeySequence::New, [&form] { form.CommandButton2.Click(); });
  }
  menu->popup(place);
}

}  // namespace platform::qt
