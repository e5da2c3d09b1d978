#pragma once
// The menu of a list, which shows the keys next to what they do. Not what its entries do.

#include <functional>

#include "app/forms/form_control.h"
#include "platform/win32/ui/list_binding.h"

namespace platform::win32 {

/// The inventory says which controls have an entry, and its text. The entries for a row are for the one that
/// is shown selected, whichever is selected later. While the menu is open its entries follow their controls
/// and the row. Shows the menu at a place on the screen, waits
/// for the choice and returns what the chosen entry does; nothing when none was chosen.
[[nodiscard]] std::function<void()> AskListMenu(const app::Inventory& inventory, ListBinding& list, int left,
                                                int top);

/// The menu itself.
class ListMenu {
 public:
  ListMenu(const app::Inventory& inventory, ListBinding& list);
  ~ListMenu();
  ListMenu(const ListMenu&) = delete;
  ListMenu& operator=(const ListMenu&) = delete;

  [[nodiscard]] HMENU Handle() const { return menu_; }
  /// Of the entry with this number, counted from 1.
  [[nodiscard]] std::function<void()> ActionOf(int number) const;

 private:
  /// How an entry is to be seen now.
  struct State {
    bool shown = true;
    bool enabled = true;
    bool checked = false;
    friend bool operator==(const State&, const State&) = default;
  };
  struct Entry {
    Text text;  ///< empty for a line
    std::function<State()> state;
    std::function<void(const State& seen)> action;  ///< may outlive the menu
    State is = {.shown = false};                    ///< in the system's menu
  };
  void Add(const app::FormControl& control);
  void AddLine();
  void AddForRow(const app::FormControl& control, const Text& key, std::function<void(const State&)> action);
  void AddCommand(const app::FormControl& control);
  void AddClick(const app::FormControl& control);
  void Follow();
  void Change(std::size_t entry, unsigned int position, const State& wanted);

  ListBinding& list_;
  const controls::RowId row_;
  HMENU menu_;
  std::vector<Entry> entries_;  // their places here, from 1, are the system's numbers
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::win32
