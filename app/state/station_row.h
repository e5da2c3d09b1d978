#pragma once
// Converts a station to a row of a list and back. Not the list (controls/list_view.h).

#include <utility>

#include "app/state/station.h"
#include "controls/list_view.h"

namespace app {

/// Without an icon and a title.
[[nodiscard]] inline controls::ListRow RowOf(Station station) {
  controls::ListRow row;
  row.cells.Reserve(kStationCells);
  row.cells.Set(kNameCell, std::move(station.name));
  for (const StationField& field : kStationFields) {
    row.cells.Set(field.cell, std::move(station.*field.value));
  }
  return row;
}

[[nodiscard]] inline Station StationOf(const controls::ListCells& cells) {
  Station station;
  station.name = cells[kNameCell];
  for (const StationField& field : kStationFields) station.*field.value = cells[field.cell];
  return station;
}

}  // namespace app
