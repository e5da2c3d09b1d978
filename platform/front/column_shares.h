#pragma once
// The widths of a list's columns in a view: what the user drags, and what the others get of the rest. Not the
// rule by which they share it (controls/column_widths.h), and not a view.

#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "controls/column_widths.h"
#include "controls/list_view.h"

namespace platform::front {

/// A view's pixels for a length at 100 %, and back.
struct PixelUnits {
  std::function<int(int)> pixels;
  std::function<int(int)> at_100_percent;
};

/// Together the columns reach the view's right edge. While the user drags one, only those behind it give way,
/// so that its edge stays under the pointer; the list is notified afterwards.
class ColumnShares {
 public:
  struct Dragged {
    int column;
    int width;  ///< in pixels
  };

  ColumnShares(controls::ListView& list, PixelUnits units);

  /// The user holds the column's edge, and the column is so wide now.
  void Drag(int column, int width);
  /// The user has released it; nothing when no edge was held.
  std::optional<Dragged> EndDrag();
  /// The turn of a drag that has ended: gives the list the width, unless another drag of the column followed.
  void Take(const Dragged& dragged);

  /// What the columns of a view with these widths and so much room are to have.
  [[nodiscard]] std::vector<int> Widths(const std::vector<int>& shown, int room) const;

 private:
  [[nodiscard]] controls::ColumnWish WishOf(int column) const;

  controls::ListView& list_;
  const PixelUnits units_;
  std::map<int, int> dragged_;  // pixels by column, until the list knows them
  int dragging_ = -1;           // the column whose edge the user holds
};

}  // namespace platform::front
