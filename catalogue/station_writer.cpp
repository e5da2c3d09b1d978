#include "catalogue/station_writer.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/state/status_sentences.h"
#include "app/text/numbers.h"
#include "app/text/text_utilities.h"
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
                             app::Settings& settings, app::Notices& notices, const StationIcons& icons,
                             app::ListPair lists, UnsavedRows& unsaved, DeletedEntries& deleted)
    : profile_(profile),
      ini_(ini),
      settings_(settings),
      notices_(notices),
      icons_(icons),
      lists_(lists),
      unsaved_(unsaved),
      deleted_(deleted) {}

void StationWriter::WriteCell(ListView& list, RowId row, app::StationCell cell, const Text& value) {
  const Text name = list.Cell(row, app::kNameCell);
  list.SetCell(row, cell, value);
  const auto was =
      ini_.CopyStationSection(name) ? UnsavedRows::SectionWas::kThere : UnsavedRows::SectionWas::kMissing;
  if (!ini_.WriteStationIni(name, KeyOf(cell), value)) {
    ReportUnsaved();
    KeepCell(list, row, cell);
  } else if (IsFull(list)) {
    unsaved_.CellWritten(row, cell, was);
  } else {
    unsaved_.CellWrittenInView(name, cell, value);
  }
}

void StationWriter::AddStation(ListView& list, const Station& station) {
  ListRow row;
  row.icon = icons_.IconOf(station.name);
  row.cells = {station.name, station.genre, station.link, station.favourite, u"", u""};
  platform::WriteGroup group(profile_);
  const RowId added = list.AddRow(std::move(row));
  WriteCommonKeys(station);
  ini_.WriteStationIni(station.name, KeyOf(app::kM3uNumberCell), station.number);
  if (group.End()) {
    unsaved_.StationWritten(station.name, IsFull(list) ? added : RowId::kNone);
    return KeepUnlisted(list, added, station);
  }
  ReportUnsaved();
  SetCells(list, added, station, Number::kShown);
  if (!IsFull(list)) lists_.full.AddRow(CopyOf(list, added));
}

void StationWriter::UpdateStation(ListView& list, RowId row, const Station& station) {
  const Text old_name = list.Cell(row, app::kNameCell);
  platform::WriteGroup group(profile_);
  ini_.DeleteStationSection(old_name);
  if (IsFull(list)) DeleteSections(unsaved_.LeftSections(row));
  SetCells(list, row, station, Number::kNotShown);
  WriteCommonKeys(station);
  if (NamesAnEntry(station.number)) {
    ini_.WriteStationIni(station.name, KeyOf(app::kM3uNumberCell), station.number);
  }
  if (!group.End()) {
    ReportUnsaved();
    return KeepStation(list, row, old_name, station);
  }
  if (!IsFull(list)) {
    unsaved_.StationDeletedInView(old_name);
    unsaved_.StationWritten(station.name, RowId::kNone);
    return KeepUnlisted(list, row, station);
  }
  if (!unsaved_.AreOneSection(old_name, station.name)) SectionIsDeleted(old_name, row);
  unsaved_.StationWritten(station.name, row);
}

/// A station that a filter view wrote under a name that the file cannot list would be gone with that view.
void StationWriter::KeepUnlisted(const ListView& list, RowId row, const Station& station) {
  if (IsFull(list) || !unsaved_.AreOneSection(station.name, u"")) return;
  const RowId kept = lists_.full.AddRow(CopyOf(list, row));
  SetCells(lists_.full, kept, station, Number::kShown);
  unsaved_.Mark(kept, {{}, {station.name}});
}

void StationWriter::DeleteStation(ListView& list, RowId row) {
  const Text name = list.Cell(row, app::kNameCell);
  std::vector<Text> sections{name};
  if (IsFull(list)) std::ranges::copy(unsaved_.LeftSections(row), std::back_inserter(sections));
  DeletedEntry entry = deleted_.EntryOf(list, row, sections);
  platform::WriteGroup group(profile_);
  DeleteSections(sections);
  if (!group.End()) return RemoveRowOnly(list, row, std::move(entry));
  list.RemoveRow(row);
  deleted_.Add(std::move(entry));
  if (!IsFull(list)) return unsaved_.StationDeletedInView(name);
  SectionIsDeleted(name, row);
  unsaved_.Remove(row);
}

/// A section was deleted for a row of the full list; the file may hold another one of that name.
void StationWriter::SectionIsDeleted(const Text& name, RowId row) {
  if (ini_.CopyStationSection(name)) return;
  if (unsaved_.StationDeleted(name, row)) settings_.CatalogueChanged = true;
}

/// The sections could not be deleted: unless the file holds nothing of it, the row comes back when the list
/// is loaded again.
void StationWriter::RemoveRowOnly(ListView& list, RowId row, DeletedEntry entry) {
  notices_.Notify(app::sentences::kNotDeleted, {app::ReadablePath(ini_.StationFile())});
  const bool is_in_no_file = IsFull(list) && unsaved_.Contains(row) && unsaved_.PartOf(row).sections.empty();
  if (IsFull(list)) unsaved_.StationNotDeleted(row);
  list.RemoveRow(row);
  if (!is_in_no_file) return;
  entry.sections.clear();
  deleted_.Add(std::move(entry));
}

void StationWriter::WriteFullList() {
  platform::WriteGroup group(profile_);
  for (const ListRow& row : lists_.full.Rows()) DeleteSections(unsaved_.LeftSections(row.id));
  for (const ListRow& row : lists_.full.Rows()) {
    for (const auto& [cell, key] : kCellKeys) {
      const Text& value = row.cells[cell];
      const bool is_no_entry = cell == app::kM3uNumberCell && !NamesAnEntry(value);
      ini_.WriteStationIni(row.cells[app::kNameCell], key, is_no_entry ? Text() : value);
    }
  }
  const bool written = group.End();
  settings_.CatalogueChanged = !written;
  if (!written) return ReportFailure();
  unsaved_.ListWritten();
}

void StationWriter::WriteCommonKeys(const Station& station) {
  ini_.WriteStationIni(station.name, kNameKey, station.name);
  ini_.WriteStationIni(station.name, KeyOf(app::kLinkCell), station.link);
  ini_.WriteStationIni(station.name, KeyOf(app::kGenreCell), station.genre);
  ini_.WriteStationIni(station.name, KeyOf(app::kFavouriteCell), station.favourite);
}

/// A row shows its number only after it was read from the file, or when there is no other place for it.
void StationWriter::SetCells(ListView& list, RowId row, const Station& station, Number number) {
  list.SetCell(row, app::kNameCell, station.name);
  list.SetCell(row, app::kGenreCell, station.genre);
  list.SetCell(row, app::kLinkCell, station.link);
  list.SetCell(row, app::kFavouriteCell, station.favourite);
  if (number == Number::kNotShown) return;
  list.SetCell(row, app::kM3uNumberCell, NamesAnEntry(station.number) ? station.number : Text());
}

void StationWriter::DeleteSections(const std::vector<Text>& names) {
  for (const Text& name : names) ini_.DeleteStationSection(name);
}

/// One cell of a row could not be written.
void StationWriter::KeepCell(const ListView& list, RowId row, app::StationCell cell) {
  const RowId kept = IsFull(list) ? row : CarryOver(list, row, list.Cell(row, app::kNameCell));
  if (kept == RowId::kNone) return;
  lists_.full.SetCell(kept, cell, list.Cell(row, cell));
  unsaved_.CellNotWritten(kept, cell);
}

/// A station that has a section could not be written anew.
void StationWriter::KeepStation(ListView& list, RowId row, const Text& old_name, const Station& station) {
  SetCells(list, row, station, Number::kShown);
  const RowId kept = IsFull(list) ? row : CarryOver(list, row, old_name);
  if (kept == RowId::kNone) {
    lists_.full.AddRow(CopyOf(list, row));
    return;
  }
  SetCells(lists_.full, kept, station, Number::kShown);
  unsaved_.StationNotWritten(kept, old_name);
}

/// The row of the full list that stands for a filter view's station of that name: made, if the list was
/// emptied, kNone when the file holds no such station.
RowId StationWriter::CarryOver(const ListView& view, RowId row, const Text& name) {
  const RowId known = unsaved_.RowOfAnyList(name);
  if (known != RowId::kNone || !ini_.CopyStationSection(name)) return known;
  ListRow station = CopyOf(view, row);
  for (const auto& [cell, key] : kCellKeys) {
    station.cells.Set(cell, ini_.ReadIni(name, key, u"", settings_.StationFileName));
  }
  const RowId added = lists_.full.AddRow(std::move(station));
  unsaved_.Remove(added);
  return added;
}

ListRow StationWriter::CopyOf(const ListView& list, RowId row) {
  const auto index = list.IndexOf(row);
  return index ? list.Rows()[*index] : ListRow();
}

void StationWriter::ReportFailure() {
  notices_.Notify(app::sentences::kNotWritten, {app::ReadablePath(ini_.StationFile())});
}

/// A change is in no file yet.
void StationWriter::ReportUnsaved() {
  ReportFailure();
  settings_.CatalogueChanged = true;
}

}  // namespace catalogue
