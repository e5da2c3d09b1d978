#include "platform/win32/ui/list_menu.h"

#include "platform/win32/base/windows_api.h"

#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {

using app::MenuEntry;

namespace {

Text TextOfEntry(const app::FormControl& control, const controls::Captioned& captioned, const Text& key) {
  const Text& own = control.use.menu_caption;
  const Text text = WithoutMnemonics(own.empty() ? captioned.Caption() : own);
  // Keys after a tab are only shown; they are bound elsewhere.
  return key.empty() ? text : text + u"\t" + key;
}

}  // namespace

ListMenu::ListMenu(const app::Inventory& inventory, ListBinding& list)
    : list_(list), row_(list.ShownId()), menu_(::CreatePopupMenu()) {
  for (const app::FormControl& control : inventory) Add(control);
  controls::ListView& rows = list.List();
  subscriptions_ += rows.RowsReset.Subscribe([this] { Follow(); });
  subscriptions_ += rows.RowRemoved.Subscribe([this](std::size_t) { Follow(); });
  subscriptions_ += rows.RowChanged.Subscribe([this](std::size_t) { Follow(); });
  Follow();
}

ListMenu::~ListMenu() { ::DestroyMenu(menu_); }

void ListMenu::Add(const app::FormControl& control) {
  switch (control.use.menu) {
    case MenuEntry::kNone:
      return;
    case MenuEntry::kClickBelowALine:
      AddLine();
      return AddClick(control);
    case MenuEntry::kClick:
      return AddClick(control);
    case MenuEntry::kOpenRow:
      return AddForRow(control, KeyName(controls::kEnterKey),
                       [&list = list_, row = row_](const State&) { list.OpenRow(row); });
    case MenuEntry::kDeleteRow:
      return AddForRow(control, DeleteKeyName(),
                       [&list = list_, row = row_](const State&) { list.DeleteRow(row); });
    case MenuEntry::kForRow:
      return AddCommand(control);
  }
}

void ListMenu::AddLine() {
  if (entries_.empty()) return;
  entries_.push_back({{}, [] { return State(); }, nullptr});
}

void ListMenu::AddForRow(const app::FormControl& control, const Text& key,
                         std::function<void(const State&)> action) {
  const auto* captioned = app::As<controls::Captioned>(control);
  if (captioned == nullptr) return;
  entries_.push_back({TextOfEntry(control, *captioned, key),
                      [this] { return State{.enabled = list_.List().Contains(row_)}; }, std::move(action)});
}

void ListMenu::AddCommand(const app::FormControl& control) {
  auto* command = app::As<controls::RowCommand>(control);
  if (command == nullptr) return;
  entries_.push_back({TextOfEntry(control, *command, {}),
                      [this, command] {
                        const controls::RowOffer offer = command->Offer(list_.List(), row_);
                        return State{.enabled = offer.available, .checked = offer.checked};
                      },
                      [&list = list_, row = row_, command](const State& seen) {
                        // What the user saw decides what was wanted.
                        const bool is_switch = command->Kind() == controls::RowCommandKind::kSwitch;
                        list.UseOnRow(*command, row, is_switch && !seen.checked);
                      }});
}

void ListMenu::AddClick(const app::FormControl& control) {
  const auto add = [&](auto& clicked, std::function<bool()> checked) {
    entries_.push_back({TextOfEntry(control, clicked, KeyName(control.use.key)),
                        [&clicked, checked = std::move(checked)] {
                          // There is no entry while the control is hidden.
                          return State{clicked.Visible(), clicked.Enabled(), checked()};
                        },
                        [&clicked](const State&) { clicked.Click(); }});
    subscriptions_ += clicked.Changed.Subscribe([this] { Follow(); });
  };
  if (auto* button = app::As<controls::CommandButton>(control)) add(*button, [] { return false; });
  if (auto* box = app::As<controls::CheckBox>(control)) add(*box, [box] { return box->Checked(); });
}

void ListMenu::Follow() {
  unsigned int position = 0;
  for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
    const State wanted = entries_[entry].state();
    if (wanted != entries_[entry].is) Change(entry, position, wanted);
    if (wanted.shown) ++position;
  }
}

void ListMenu::Change(std::size_t entry, unsigned int position, const State& wanted) {
  const State before = std::exchange(entries_[entry].is, wanted);
  if (!wanted.shown) {
    if (before.shown) ::DeleteMenu(menu_, position, MF_BYPOSITION);
    return;
  }
  MENUITEMINFOW item{};
  item.cbSize = sizeof item;
  item.fMask = MIIM_STATE;
  item.fState =
      (wanted.enabled ? MFS_ENABLED : MFS_DISABLED) | (wanted.checked ? MFS_CHECKED : MFS_UNCHECKED);
  if (before.shown) {
    ::SetMenuItemInfoW(menu_, position, TRUE, &item);
    return;
  }
  const Text& text = entries_[entry].text;
  item.fMask |= MIIM_ID | MIIM_FTYPE | (text.empty() ? 0U : MIIM_STRING);
  item.fType = text.empty() ? MFT_SEPARATOR : MFT_STRING;
  item.wID = static_cast<UINT>(entry) + 1;
  item.dwTypeData = const_cast<wchar_t*>(Wide(text));
  ::InsertMenuItemW(menu_, position, TRUE, &item);
}

std::function<void()> ListMenu::ActionOf(int number) const {
  const auto index = static_cast<std::size_t>(number) - 1;
  if (number < 1 || index >= entries_.size() || !entries_[index].action) return nullptr;
  return [action = entries_[index].action, seen = entries_[index].is] { action(seen); };
}

std::function<void()> AskListMenu(const app::Inventory& inventory, ListBinding& list, int left, int top) {
  const ListMenu menu(inventory, list);
  const HWND window = ::GetAncestor(list.Handle(), GA_ROOT);
  const int chosen = ::TrackPopupMenuEx(menu.Handle(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, left,
                                        top, window, nullptr);
  return menu.ActionOf(chosen);
}

}  // namespace platform::win32
