#include "platform/qt/list_menu.h"

#include <QMenu>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/qt/input_binding.h"
#include "platform/qt/key_sequence.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

using app::MenuEntry;
using controls::RowId;

/// The menu of one list, for one of its rows.
class ListMenu final : public QMenu {
 public:
  ListMenu(const app::Inventory& inventory, ListBinding& list, QtMessageLoop& loop)
      : QMenu(&list.View()), list_(list), rows_(list.List()), row_(list.ShownSelection()), loop_(loop) {
    setObjectName(QStringLiteral("list_menu"));
    setAttribute(Qt::WA_DeleteOnClose);
    for (const app::FormControl& control : inventory) Add(control);
    const auto follow_row = [this] { FollowRow(); };
    subscriptions_ += rows_.RowsReset.Subscribe(follow_row);
    subscriptions_ += rows_.RowRemoved.Subscribe([follow_row](std::size_t) { follow_row(); });
    subscriptions_ += rows_.RowChanged.Subscribe([follow_row](std::size_t) { follow_row(); });
    FollowRow();
  }

 private:
  void Add(const app::FormControl& control) {
    switch (control.use.menu) {
      case MenuEntry::kNone:
        return;
      case MenuEntry::kClickBelowALine:
        addSeparator();
        [[fallthrough]];
      case MenuEntry::kClick:
        return AddClick(control);
      case MenuEntry::kOpenRow:
        return AddForRow(control, Qt::Key_Return, [&list = list_, row = row_] { list.OpenRow(row); });
      case MenuEntry::kDeleteRow:
        return AddForRow(control, Qt::Key_Delete, [&list = list_, row = row_] { list.DeleteRow(row); });
      case MenuEntry::kForRow:
        return AddCommand(control);
    }
  }

  QAction& AddEntry(const app::FormControl& control, const QKeySequence& keys) {
    const auto& captioned = *app::As<controls::Captioned>(control);
    const controls::Text& own = control.use.menu_caption;
    QString text = WithoutMnemonics(own.empty() ? captioned.Caption() : own);
    // Keys after a tab are only shown; they are bound elsewhere.
    if (!keys.isEmpty()) text += QLatin1Char('\t') + keys.toString(QKeySequence::NativeText);
    return *addAction(text);
  }

  void AddForRow(const app::FormControl& control, const QKeySequence& keys, std::function<void()> action) {
    QAction& entry = AddEntry(control, keys);
    connect(&entry, &QAction::triggered, &list_.View(), std::move(action));
    followers_.push_back([this, &entry] { entry.setEnabled(rows_.Contains(row_)); });
  }

  void AddCommand(const app::FormControl& control) {
    auto* command = app::As<controls::RowCommand>(control);
    if (command == nullptr) return;
    QAction& entry = AddEntry(control, {});
    entry.setCheckable(command->Kind() == controls::RowCommandKind::kSwitch);
    connect(&entry, &QAction::triggered, &list_.View(),
            [&list = list_, row = row_, command](bool checked) { list.UseOnRow(*command, row, checked); });
    followers_.push_back([this, command, &entry] {
      const controls::RowOffer offer = command->Offer(rows_, row_);
      entry.setEnabled(offer.available);
      entry.setChecked(offer.checked);
    });
  }

  void AddClick(const app::FormControl& control) {
    if (auto* button = app::As<controls::CommandButton>(control)) AddClickOn(*button, control);
    if (auto* box = app::As<controls::CheckBox>(control)) AddClickOn(*box, control);
  }
  template <typename Control>
  void AddClickOn(Control& control, const app::FormControl& of_form) {
    QAction& entry = AddEntry(of_form, ToQt(of_form.use.key));
    connect(&entry, &QAction::triggered, &list_.View(), [&view = list_.View(), &loop = loop_, &control] {
      loop.HandOver(view, [&view, &control] {
        if (!IsBlockedByDialog(view)) control.Click();
      });
    });
    const auto follow = [&control, &entry] {
      entry.setVisible(control.Visible());
      entry.setEnabled(control.Enabled());
      if constexpr (std::is_same_v<Control, controls::CheckBox>) {
        entry.setCheckable(true);
        entry.setChecked(control.Checked());
      }
    };
    follow();
    subscriptions_ += control.Changed.Subscribe(follow);
  }

  void FollowRow() {
    for (const auto& follow : followers_) follow();
  }

  ListBinding& list_;
  controls::ListView& rows_;  // which outlive the binding
  const RowId row_;
  QtMessageLoop& loop_;
  std::vector<std::function<void()>> followers_;  // of the entries for the row
  controls::Subscriptions subscriptions_;
};

}  // namespace

void ShowListMenu(const app::Inventory& inventory, ListBinding& list, QtMessageLoop& loop,
                  const QPoint& place) {
  // Closing destroys it.
  (new ListMenu(inventory, list, loop))->popup(place);
}

}  // namespace platform::qt
