#pragma once
// How the columns of a list share the room that it has. Not who drags a column (controls/list_view.h).

#include <vector>

namespace controls {

/// Widths are in any unit, the same for all columns and the room.
struct ColumnWish {
  int width = 0;
  bool takes_spare_room = false;
};

/// The widths with which the columns fill the room: what they leave of it goes to those that take it, in
/// equal parts, and to the last column when there are none. Wider columns stay as they are.
[[nodiscard]] std::vector<int> FittedWidths(const std::vector<ColumnWish>& wishes, int room);

}  // namespace controls
