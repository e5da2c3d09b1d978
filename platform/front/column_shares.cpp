#include "platform/front/column_shares.h"

#include <algorithm>
#include <utility>

namespace platform::front {

using controls::ColumnWish;

ColumnShares::ColumnShares(controls::ListView& list, PixelUnits units)
    : list_(list), units_(std::move(units)) {}

void ColumnShares::Drag(int column, int width) {
  dragging_ = column;
  dragged_[column] = width;
}

std::optional<ColumnShares::Dragged> ColumnShares::EndDrag() {
  const int column = std::exchange(dragging_, -1);
  if (column < 0) return std::nullopt;
  return Dragged{column, dragged_[column]};
}

void ColumnShares::Take(const Dragged& dragged) {
  const auto [column, width] = dragged;
  if (dragging_ == column || dragged_[column] != width) return;
  dragged_.erase(column);
  list_.DragColumn(static_cast<std::size_t>(column), units_.at_100_percent(width));
}

std::vector<int> ColumnShares::Widths(const std::vector<int>& shown, int room) const {
  const int columns = static_cast<int>(std::min(shown.size(), list_.Columns().size()));
  if (dragging_ >= columns - 1) return shown;
  std::vector<ColumnWish> wishes;
  for (int column = 0; column < columns; ++column) {
    const bool keeps_its_width = column <= dragging_;
    wishes.push_back(keeps_its_width ? ColumnWish{shown[static_cast<std::size_t>(column)], false}
                                     : WishOf(column));
  }
  return controls::FittedWidths(wishes, room);
}

ColumnWish ColumnShares::WishOf(int column) const {
  const auto dragged = dragged_.find(column);
  if (dragged != dragged_.end()) return {dragged->second, false};
  const controls::ListColumn& wanted = list_.Columns()[static_cast<std::size_t>(column)];
  if (wanted.users_width) return {units_.pixels(*wanted.users_width), false};
  return {units_.pixels(wanted.width), wanted.spare_room == controls::SpareRoom::kTakes};
}

}  // namespace platform::front
