#include "catalogue/station_writer.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/state/station_row.h"
#include "app/state/status_sentences.h"
#include "app/text/text_utilities.h"

namespace catalogue {

using app::Station;
using app::StationField;
using controls::ListRow;
using controls::ListView;
using controls::RowId;
using platform::Text;

StationWriter::StationWriter(const StationFile& file, app::Settings& settings, app::Notices& notices,
                             const StationIcons& icons, app::ListPair lists, UnsavedRows& unsaved,
                             DeletedEntries& deleted)
    : file_(file),
      settings_(settings),
      notices_(notices),
      icons_(icons),
      lists_(lists),
      unsaved_(unsaved),
      deleted_(deleted) {}

void StationWriter::WriteField(ListView& list, RowId row, const StationField& field, const Text& value) {
  const Text name = list.Cell(row, app::kNameCell);
  list.SetCell(row, field.cell, value);
  const auto was = file_.Contains(name) ? UnsavedRows::SectionWas::kThere : UnsavedRows::SectionWas::kMissing;
  if (!file_.WriteField(name, field, value)) {
    ReportUnsaved();
    KeepField(list, row, field);
  } else if (IsFull(list)) {
    unsaved_.CellWritten(row, field.cell, was);
  } else {
    unsaved_.CellWrittenInView(name, field.cell, value);
  }
}

void StationWriter::AddStation(ListView& list, const Station& station) {
  ListRow row = app::RowOf(station);
  row.icon = icons_.IconOf(station.name);
  row.cells.Set(app::kM3uNumberCell, u"");
  platform::WriteGroup group = file_.Group();
  const RowId added = list.AddRow(std::move(row));
  file_.WriteWhole(station, StationFile::NumberKey::kAlways);
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
  platform::WriteGroup group = file_.Group();
  file_.Delete(old_name);
  if (IsFull(list)) DeleteSections(unsaved_.LeftSections(row));
  SetCells(list, row, station, Number::kNotShown);
  file_.WriteWhole(station, StationFile::NumberKey::kIfAnEntry);
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

/// A station that a filter view wrote under a name that the file cannot list would be lost with that view.
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
  platform::WriteGroup group = file_.Group();
  DeleteSections(sections);
  if (!group.End()) return RemoveRowOnly(list, row, std::move(entry));
  list.RemoveRow(row);
  deleted_.Add(std::move(entry));
  if (!IsFull(list)) return unsaved_.StationDeletedInView(name);
  SectionIsDeleted(name, row);
  unsaved_.Remove(row);
}

/// A section was deleted for a row of the full list; the file may contain another one of that name.
void StationWriter::SectionIsDeleted(const Text& name, RowId row) {
  if (file_.Contains(name)) return;
  if (unsaved_.StationDeleted(name, row)) settings_.CatalogueChanged = true;
}

/// The sections could not be deleted: unless the file contains nothing of the row, it comes back when the
/// list is loaded again.
void StationWriter::RemoveRowOnly(ListView& list, RowId row, DeletedEntry entry) {
  notices_.Notify(app::sentences::kNotDeleted, {app::ReadablePath(file_.Path())});
  const bool is_in_no_file = IsFull(list) && unsaved_.Contains(row) && unsaved_.PartOf(row).sections.empty();
  if (IsFull(list)) unsaved_.StationNotDeleted(row);
  list.RemoveRow(row);
  if (!is_in_no_file) return;
  entry.sections.clear();
  deleted_.Add(std::move(entry));
}

void StationWriter::WriteFullList() {
  platform::WriteGroup group = file_.Group();
  for (const ListRow& row : lists_.full.Rows()) DeleteSections(unsaved_.LeftSections(row.id));
  for (const ListRow& row : lists_.full.Rows()) file_.WriteListed(app::StationOf(row.cells));
  const bool written = group.End();
  settings_.CatalogueChanged = !written;
  if (!written) return ReportFailure();
  unsaved_.ListWritten();
}

/// A row shows its number only after it was read from the file, or when there is no other place for it.
void StationWriter::SetCells(ListView& list, RowId row, const Station& station, Number number) {
  list.SetCell(row, app::kNameCell, station.name);
  for (const StationField& field : app::kStationFieldsByCell) {
    if (field.cell != app::kM3uNumberCell) list.SetCell(row, field.cell, station.*field.value);
  }
  if (number == Number::kNotShown) return;
  list.SetCell(row, app::kM3uNumberCell, NamesAnEntry(station.number) ? station.number : Text());
}

void StationWriter::DeleteSections(const std::vector<Text>& names) {
  for (const Text& name : names) file_.Delete(name);
}

/// One cell of a row could not be written.
void StationWriter::KeepField(const ListView& list, RowId row, const StationField& field) {
  const RowId kept = IsFull(list) ? row : CarryOver(list, row, list.Cell(row, app::kNameCell));
  if (kept == RowId::kNone) return;
  lists_.full.SetCell(kept, field.cell, list.Cell(row, field.cell));
  unsaved_.CellNotWritten(kept, field.cell);
}

/// A station that has a section could not be rewritten.
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

/// The full list's row for a filter view's station of that name: created if the list was emptied, kNone when
/// the file has no such station.
RowId StationWriter::CarryOver(const ListView& view, RowId row, const Text& name) {
  const RowId known = unsaved_.RowOfAnyList(name);
  if (known != RowId::kNone || !file_.Contains(name)) return known;
  ListRow carried = CopyOf(view, row);
  const Station station = file_.Read(name);
  for (const StationField& field : app::kStationFields) carried.cells.Set(field.cell, station.*field.value);
  const RowId added = lists_.full.AddRow(std::move(carried));
  unsaved_.Remove(added);
  return added;
}

ListRow StationWriter::CopyOf(const ListView& list, RowId row) {
  const auto index = list.IndexOf(row);
  return index ? list.Rows()[*index] : ListRow();
}

void StationWriter::ReportFailure() {
  notices_.Notify(app::sentences::kNotWritten, {app::ReadablePath(file_.Path())});
}

/// A change is not in any file yet.
void StationWriter::ReportUnsaved() {
  ReportFailure();
  settings_.CatalogueChanged = true;
}

}  // namespace catalogue
