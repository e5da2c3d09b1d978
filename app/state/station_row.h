#pragma once
// What the cells of a station's row hold. Not the station file, nor the list that shows the rows.

#include <cstddef>

namespace app {

/// Cells of a row, which are the columns of both lists in this order.
enum StationCell : std::size_t {
  kNameCell = 0,
  kGenreCell = 1,
  kLinkCell = 2,
  kFavouriteCell = 3,  ///< "1" or empty
  kTitleCell = 4,      ///< the title last seen
  kM3uNumberCell = 5,  ///< the entry wanted of a playlist link
};

inline constexpr std::size_t kStationCells = 6;

}  // namespace app
