#pragma once
// A station: its fields, and the table of where each of them is in a row and in the station file.
// Not the rows (app/state/station_row.h) nor the file (catalogue/station_file.h).

#include <algorithm>
#include <array>
#include <cstddef>

#include "controls/list_view.h"
#include "ports/text.h"

namespace app {

struct Station {
  platform::Text name;  ///< names the section in the file
  platform::Text link;
  platform::Text genre;
  platform::Text favourite;  ///< "1" or empty
  platform::Text number;     ///< of the entry within a playlist link
};

/// Cells of a row, which are the columns of both lists in this order.
enum StationCell : std::size_t {
  kNameCell,
  kGenreCell,
  kLinkCell,
  kFavouriteCell,
  kTitleCell,  ///< the title last seen, which is not a field of a station
  kM3uNumberCell,
  kStationCells,  ///< their number
};

struct StationColumn {
  platform::TextView caption;
  int width;  ///< pixels at 100 %
  controls::CellLook look = controls::CellLook::kText;
  controls::SpareRoom spare_room = controls::SpareRoom::kLeaves;
};

/// By StationCell.
inline constexpr std::array<StationColumn, kStationCells> kStationColumns = {{
    {u"Station", 300},
    {u"Genre", 120},
    {u"WebLink", 120, controls::CellLook::kAddress, controls::SpareRoom::kTakes},
    {u"Favorit", 120, controls::CellLook::kMark},
    {u"Titel", 200, controls::CellLook::kText, controls::SpareRoom::kTakes},
    {u"M3U Nr.", 120},
}};
[[nodiscard]] inline controls::ListColumn ListColumnOf(const StationColumn& column) {
  return {.caption = platform::Text(column.caption),
          .width = column.width,
          .look = column.look,
          .spare_room = column.spare_room};
}
static_assert(!kStationColumns.back().caption.empty(), "every cell has a column");

/// A field with a key of its own in the station's section. Every field but the name has one.
struct StationField {
  platform::Text Station::*value;
  const char16_t* key;
  StationCell cell;
};

inline constexpr StationField kLinkField = {&Station::link, u"Link", kLinkCell};
inline constexpr StationField kGenreField = {&Station::genre, u"Genre", kGenreCell};
inline constexpr StationField kFavouriteField = {&Station::favourite, u"Favorit", kFavouriteCell};
inline constexpr StationField kNumberField = {&Station::number, u"M3uNr", kM3uNumberCell};

/// In the order in which a whole station is written.
inline constexpr std::array kStationFields = {kLinkField, kGenreField, kFavouriteField, kNumberField};

/// In the order of the cells, in which a station is read and the list is saved.
inline constexpr auto kStationFieldsByCell = [] {
  auto fields = kStationFields;
  std::ranges::sort(fields, {}, &StationField::cell);
  return fields;
}();

}  // namespace app
