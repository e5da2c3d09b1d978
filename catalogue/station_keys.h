#pragma once
// Which key of a station's section holds which cell of its row. Not reading or writing them.

#include <array>

#include "app/state/station_row.h"

namespace catalogue {

struct CellKey {
  app::StationCell cell;
  const char16_t* key;
};

/// In the order in which saving the list writes them. The section's name is the name cell.
inline constexpr std::array<CellKey, 4> kCellKeys = {{{app::kGenreCell, u"Genre"},
                                                      {app::kLinkCell, u"Link"},
                                                      {app::kFavouriteCell, u"Favorit"},
                                                      {app::kM3uNumberCell, u"M3uNr"}}};

/// The name once more; written with a whole station, never read.
inline constexpr char16_t kNameKey[] = u"Station";

/// The key of a cell of the table above; null for any other cell.
constexpr const char16_t* KeyOf(app::StationCell cell) {
  for (const CellKey& entry : kCellKeys) {
    if (entry.cell == cell) return entry.key;
  }
  return nullptr;
}

}  // namespace catalogue
