#include "controls/column_widths.h"

#include <algorithm>

namespace controls {

std::vector<int> FittedWidths(const std::vector<ColumnWish>& wishes, int room) {
  std::vector<int> widths;
  long long spare = room;
  for (const ColumnWish& wish : wishes) {
    widths.push_back(wish.width);
    spare -= wish.width;
  }
  if (widths.empty() || spare <= 0) return widths;
  auto takers = std::ranges::count_if(wishes, &ColumnWish::takes_spare_room);
  if (takers == 0) widths.back() += static_cast<int>(spare);
  for (std::size_t column = 0; takers > 0; ++column) {
    if (!wishes[column].takes_spare_room) continue;
    const long long part = spare / takers--;
    widths[column] += static_cast<int>(part);
    spare -= part;
  }
  return widths;
}

}  // namespace controls
