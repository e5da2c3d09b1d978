#include "catalogue/station_writer.h"

#include <utility>

#include "app/numbers.h"
#include "catalogue/station_keys.h"

namespace catalogue {

using controls::ListRow;
using controls::ListView;
using controls::RowId;
using platform::Text;

namespace {

/// An entry number counts from 1; a text that is no number counts as 0.
bool NamesAnEntry(const Text& number) { return app::ToNumber(number).value_or(0) >= 1; }

}  // namespace

StationWriter::StationWriter(platform::PrivateProfile& profile, app::IniProcedures& ini,
                             const StationIcons& icons, controls::ListPair lists, UnsavedRows& unsaved)
    : profile_(profile), ini_(ini), icons_(icons), lists_(lists), unsaved_(unsaved) {}

void StationWriter::WriteCell(ListView& list, RowId row, app::StationCell cell, const Text& value) {
  const Text name = list.Cell(row, app::kNameCell);
  list.SetCell(row, cell, value);
  const auto was =
      ini_.CopyStationSection(name) ? UnsavedRows::SectionWas::kThere : UnsavedRows::SectionWas::kMissing;
  if (!ini_.WriteStationIni(name, KeyOf(cell), value)) return;
  if (IsFull(list)) {
    unsaved_.CellWritten(row, cell, was);
  } else {
    unsaved_.CellWrittenInView(name, cell, value);
  }
}

void StationWriter::AddStation(ListView& list, const Station& station) {
  ListRow row;
  row.icon = icons_.IconOf(station.name);
  row.cells[app::kNameCell] = station.name;
  row.cells[app::kGenreCell] = station.genre;
  row.cells[app::kLinkCell] = station.link;
  row.cells[app::kFavouriteCell] = station.favourite;

  platform::WriteGroup group(profile_);
  const RowId added = list.AddRow(std::move(row));
  WriteCommonKeys(station);
  ini_.WriteStationIni(station.name, KeyOf(app::kM3uNumberCell), station.number);
  if (group.End()) unsaved_.StationWritten(station.name, IsFull(list) ? added : RowId::kNone);
}

void StationWriter::UpdateStation(ListView& list, RowId row, const Station& station) {
  const Text old_name = list.Cell(row, app::kNameCell);
  platform::WriteGroup group(profile_);
  ini_.DeleteStationSection(old_name);
  list.SetCell(row, app::kNameCell, station.name);
  list.SetCell(row, app::kGenreCell, station.genre);
  list.SetCell(row, app::kLinkCell, station.link);
  list.SetCell(row, app::kFavouriteCell, station.favourite);
  WriteCommonKeys(station);
  if (NamesAnEntry(station.number)) {
    ini_.WriteStationIni(station.name, KeyOf(app::kM3uNumberCell), station.number);
  }
  if (!group.End()) return;
  if (IsFull(list)) {
    if (!unsaved_.AreOneSection(old_name, station.name)) unsaved_.StationDeleted(old_name, row);
    unsaved_.StationWritten(station.name, row);
  } else {
    unsaved_.StationDeletedInView(old_name);
    unsaved_.StationWritten(station.name, RowId::kNone);
  }
}

void StationWriter::DeleteStation(ListView& list, RowId row) {
  const Text name = list.Cell(row, app::kNameCell);
  const bool deleted = ini_.DeleteStationSection(name);
  list.RemoveRow(row);
  if (!deleted) return;
  if (IsFull(list)) {
    unsaved_.StationDeleted(name, row);
  } else {
    unsaved_.StationDeletedInView(name);
  }
}

void StationWriter::WriteFullList() {
  platform::WriteGroup group(profile_);
  for (const ListRow& row : lists_.full.Rows()) {
    for (const auto& [cell, key] : kCellKeys) {
      const Text& value = row.cells[cell];
      const bool is_no_entry = cell == app::kM3uNumberCell && !NamesAnEntry(value);
      ini_.WriteStationIni(row.cells[app::kNameCell], key, is_no_entry ? Text() : value);
    }
  }
  if (group.End()) unsaved_.ListWritten();
}

void StationWriter::WriteCommonKeys(const Station& station) {
  ini_.WriteStationIni(station.name, kNameKey, station.name);
  ini_.WriteStationIni(station.name, KeyOf(app::kLinkCell), station.link);
  ini_.WriteStationIni(station.name, KeyOf(app::kGenreCell), station.genre);
  ini_.WriteStationIni(station.name, KeyOf(app::kFavouriteCell), station.favourite);
}

}  // namespace catalogue
