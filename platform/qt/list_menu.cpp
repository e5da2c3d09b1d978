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

  void Add(const app::FormControl& control) {
    switch (control.use.menu) {
      case MenuEntry::kNone:
        return;
      case MenuEntry::kClickBelowALine:
        menu_->addSeparator();
        [[fallthrough]];
      case MenuEntry::kClick:
        return AddClick(control);
      case MenuEntry::kOpenRow:
        return AddForRow(control, Qt::Key_Return, [&list = list_] { list.EnterPressed.Raise(); });
      case MenuEntry::kDeleteRow:
        return AddForRow(control, Qt::Key_Delete, [&list = list_] { list.DeletePressed.Raise(); });
    }
  }
  void Show(const QPoint& place) { menu_->popup(place); }

 private:
  QAction& AddEntry(const controls::Captioned& control, const QKeySequence& keys,
                    const std::function<void()>& action) {
    QString text = WithoutMnemonics(control.Caption());
    // Keys after a tab are only shown; they are bound elsewhere.
    if (!keys.isEmpty()) text += QLatin1Char('\t') + keys.toString(QKeySequence::NativeText);
    QAction* entry = menu_->addAction(text);
    QObject::connect(entry, &QAction::triggered, &list_, action);
    return *entry;
  }
  void AddForRow(const app::FormControl& control, const QKeySequence& keys,
                 const std::function<void()>& action) {
    const auto* button = app::As<controls::CommandButton>(control);
    if (button != nullptr) AddEntry(*button, keys, action).setEnabled(list_.SelectedRow().has_value());
  }
  void AddClick(const app::FormControl& control) {
    const QKeySequence keys = ToQt(control.use.key);
    if (auto* button = app::As<controls::CommandButton>(control)) AddClickOn(*button, keys);
    auto* box = app::As<controls::CheckBox>(control);
    QAction* check = box == nullptr ? nullptr : AddClickOn(*box, keys);
    if (check == nullptr) return;
    check->setCheckable(true);
    check->setChecked(box->Checked());
  }
  /// Null while the control is hidden.
  template <typename Control>
  QAction* AddClickOn(Control& control, const QKeySequence& keys) {
    if (!control.Visible()) return nullptr;
    QAction& entry = AddEntry(control, keys, [&list = list_, &loop = loop_, &control] {
      loop.HandOver(list, [&list, &control] {
        if (!IsBlockedByDialog(list)) control.Click();
      });
    });
    entry.setEnabled(control.Enabled());
    return &entry;
  }

  ReportView& list_;
  QtMessageLoop& loop_;
  QMenu* menu_;  // which ends itself
};

}  // namespace

void ShowListMenu(const app::Inventory& inventory, ReportView& list, QtMessageLoop& loop,
                  const QPoint& place) {
  ListMenuMaker menu(list, loop);
  for (const app::FormControl& control : inventory) menu.Add(control);
  menu.Show(place);
}

}  // namespace platform::qt
