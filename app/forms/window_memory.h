#pragma once
// What a front end remembers of a window from one run to the next, and its file's format. Not when it is
// kept, and not the file (both are the front end's).

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/forms/form_control.h"
#include "app/forms/window_place.h"

namespace app {

struct RememberedColumn {
  std::string list;  ///< the name in the inventory
  std::size_t column = 0;
  int width = 0;  ///< the user's, in pixels at 100 %
  friend bool operator==(const RememberedColumn&, const RememberedColumn&) = default;
};

struct WindowMemory {
  std::optional<WindowPlace> place = std::nullopt;  ///< while the window was neither maximised nor minimised
  bool maximized = false;
  std::vector<RememberedColumn> columns = {};
  friend bool operator==(const WindowMemory&, const WindowMemory&) = default;
};

[[nodiscard]] std::string FormatWindowMemory(const WindowMemory& memory);

/// Nothing for a file that is not wholly in this version's format, or has a number beyond all reason: half of
/// a memory is worth no more than none.
[[nodiscard]] std::optional<WindowMemory> ParseWindowMemory(std::string_view bytes);

/// No file that is longer has a meaning.
inline constexpr std::size_t kLongestWindowMemory = 16384;

/// The widths that the user has given to columns of the form's lists.
[[nodiscard]] std::vector<RememberedColumn> UsersColumns(const Inventory& inventory);

/// Gives them back to the lists that still have these columns.
void RestoreColumns(const Inventory& inventory, const std::vector<RememberedColumn>& columns);

}  // namespace app
