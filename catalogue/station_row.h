#pragma once
// What the cells of a station's row hold. Not the station file.

#include <cstddef>

namespace catalogue {

/// Cells of a row, which are the columns of both lists in this order.
enum StationCell : std::size_t {
  kName = 0,
  kGenre = 1,
  kLink = 2,
  kFavourite = 3,  ///< "1" or empty
  kTitle = 4,      ///< the title last seen
  kM3uNumber = 5,  ///< the entry wanted of a playlist link
};

}  // namespace catalogue
