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
                       [this_list = &list_, row = row_] { this_list->OpenRow(row); });
    case MenuEntry::kDeleteRow:
      return AddForRow(control, DeleteKeyName(),
                       [this_list = &list_, row = row_] { this_list->DeleteRow(row); });
    case MenuEntry::kForRow:
      return AddCommand(control);
  }
}

void ListMenu::AddLine() {
  if (::GetMenuItemCount(menu_) > 0) ::AppendMenuW(menu_, MF_SEPARATOR, 0, nullptr);
}

void ListMenu::AddForRow(const app::FormControl& control, const Text& key, std::function<void()> action) {
  const auto* captioned = app::As<controls::Captioned>(control);
  if (captioned == nullptr) return;
  Append({TextOfEntry(control, *captioned, key), list_.List().Contains(row_), false, std::move(action)});
}

void ListMenu::AddCommand(const app::FormControl& control) {
  auto* command = app::As<controls::RowCommand>(control);
  if (command == nullptr) return;
  const controls::RowOffer offer = command->Offer(list_.List(), row_);
  // The menu does not turn the check round itself.
  const bool wanted = command->Kind() == controls::RowCommandKind::kSwitch && !offer.checked;
  Append({TextOfEntry(control, *command, {}), offer.available, offer.checked,
          [this_list = &list_, command, row = row_, wanted] { this_list->UseOnRow(*command, row, wanted); }});
}

void ListMenu::AddClick(const app::FormControl& control) {
  const auto add = [&](auto& clicked, bool checked) {
    // There is no entry while the control is hidden.
    if (!clicked.Visible()) return;
    Append({TextOfEntry(control, clicked, KeyName(control.use.key)), clicked.Enabled(), checked,
            [&clicked] { clicked.Click(); }});
  };
  if (auto* button = app::As<controls::CommandButton>(control)) add(*button, false);
  if (auto* box = app::As<controls::CheckBox>(control)) add(*box, box->Checked());
}

void ListMenu::Append(Entry entry) {
  actions_.push_back(std::move(entry.action));
  const UINT state = (entry.enabled ? MF_ENABLED : MF_GRAYED) | (entry.checked ? MF_CHECKED : MF_UNCHECKED);
  ::AppendMenuW(menu_, MF_STRING | state, actions_.size(), Wide(entry.text));
}

std::function<void()> ListMenu::ActionOf(int number) const {
  const auto index = static_cast<std::size_t>(number);
  return number >= 1 && index <= actions_.size() ? actions_[index - 1] : nullptr;
}

std::function<void()> AskListMenu(const app::Inventory& inventory, ListBinding& list, int left, int top) {
  const ListMenu menu(inventory, list);
  const HWND window = ::GetAncestor(list.Handle(), GA_ROOT);
  const int chosen = ::TrackPopupMenuEx(menu.Handle(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, left,
                                        top, window, nullptr);
  return menu.ActionOf(chosen);
}

}  // namespace platform::win32
