#pragma once
// Which rows of the full list are not completely in the station file, and which part of each of them is.
// Not which rows were edited, and not the reading or writing of the file (catalogue/station_store.h,
// catalogue/station_writer.h).

#include <cstddef>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "app/state/station.h"
#include "controls/list_view.h"
#include "ports/text.h"
#include "ports/text_conversion.h"

namespace catalogue {

/// The part of an unsaved row that is in the station file.
struct PartInFile {
  std::set<app::StationCell> cells;      ///< written one by one, in the section of the row's name
  std::vector<platform::Text> sections;  ///< names of the sections that exist only for this row
};

struct UnsavedRow {
  controls::ListRow row;
  PartInFile part;
};

/// A row of the full list is unsaved from when it is added until the station file contains all of it; saved
/// rows do not appear here. For each unsaved row this class knows which cells were written to the file one by
/// one - only these are read back when the list is loaded again - and which sections exist only because such
/// writes created them; these are not rows of their own. Once a filter view has deleted the last of these
/// sections, or renamed the station away from it, the user has deleted the row, and the next load drops it.
///
/// A saved row is overwritten when another one of its name is written: the next load drops it, unless the
/// other one is deleted first.
///
/// Names are compared as the file stores them (catalogue/stored_name.h).
class UnsavedRows {
 public:
  /// Every row that is added to `full` counts as unsaved until it is marked as saved.
  UnsavedRows(controls::ListView& full, platform::TextConversion& conversion);

  [[nodiscard]] bool Contains(controls::RowId row) const { return parts_.contains(row); }
  /// Whether the file contains this row, and not another one of its name.
  [[nodiscard]] bool IsSaved(controls::RowId row) const {
    return !parts_.contains(row) && !overwritten_.contains(row);
  }
  /// The row to which the file's section of that name belongs: a saved row, or an unsaved one that owns the
  /// section; kNone when the full list has none.
  [[nodiscard]] controls::RowId RowOf(const platform::Text& name) const;
  /// The same, but a row that would come back with the next load comes back now.
  [[nodiscard]] controls::RowId RowOfAnyList(const platform::Text& name);
  /// Whether the row with this part owns the section of that name.
  [[nodiscard]] bool IsOwnSection(const PartInFile& part, const platform::Text& name) const {
    return Owns(part, Stored(name));
  }
  /// The sections that the row owns under an earlier name: it was renamed, and the file could not be written.
  [[nodiscard]] std::vector<platform::Text> LeftSections(controls::RowId row) const;
  /// The part of an unsaved row that is in the file.
  [[nodiscard]] PartInFile PartOf(controls::RowId row) const;
  /// The unsaved rows with all their cells in the order of the list, then those that are in no list but come
  /// back when it is loaded.
  [[nodiscard]] std::vector<UnsavedRow> All() const;

  /// Raised when a call below has reported what was written or deleted. Rows that are added, removed, moved
  /// or changed are announced by the list.
  controls::Event<> Changed;

  /// Whether two names mean the same section of the station file.
  [[nodiscard]] bool AreOneSection(const platform::Text& name, const platform::Text& other) const;

  /// Appends such rows to the full list. To be called at start-up, before the list is first loaded, so that
  /// the load reads their cells back and skips the sections that they own.
  void PutBack(std::vector<UnsavedRow> rows);
  /// The row is unsaved from now on.
  void Mark(controls::RowId row, PartInFile part);
  /// The file contains the whole row, or nobody wants it any more.
  void Remove(controls::RowId row);
  void Clear();

  /// The full list is about to be emptied: rows that are partly in the file come back with the next load, as
  /// saved rows do.
  void ListIsEmptied();

  enum class SectionWas { kThere, kMissing };
  /// One cell of a row was written to the file; `was` is what its section was before.
  void CellWritten(controls::RowId row, app::StationCell cell, SectionWas was);
  /// One cell of a row could not be written, so that it is newer than the file from now on.
  void CellNotWritten(controls::RowId row, app::StationCell cell);
  /// A filter view wrote one cell of the station of that name: the unsaved row that owns its section gets the
  /// value.
  void CellWrittenInView(const platform::Text& name, app::StationCell cell, const platform::Text& value);

  /// The file now contains a whole station of that name, written for `row`, or for a filter view (kNone). A
  /// row whose name the file cannot list stays unsaved.
  void StationWritten(const platform::Text& name, controls::RowId row);
  /// A whole row could not be written. Its part in the file still has the row's old name.
  void StationNotWritten(controls::RowId row, const platform::Text& old_name);
  /// The file contains every row of the full list.
  void ListWritten();

  /// The last section of that name was deleted for a row of the full list, which is gone or has another name
  /// now. Saved rows of the same name become unsaved; a section of that name would belong to them. True when
  /// there were any.
  bool StationDeleted(const platform::Text& name, controls::RowId row);
  /// The section could not be deleted, and the row is about to leave the full list: it comes back with the
  /// next load, as saved rows do.
  void StationNotDeleted(controls::RowId row);
  /// A filter view deleted the section of that name.
  void StationDeletedInView(const platform::Text& name);

 private:
  /// A row is newer than the file; `part` is its part in the file if it was saved until now.
  PartInFile& MakeUnsaved(controls::RowId row, PartInFile part);
  void MarkOverwritten(const platform::Text& stored);
  [[nodiscard]] platform::Text Stored(platform::TextView name) const;
  [[nodiscard]] bool IsNamed(controls::RowId row, const platform::Text& stored) const;
  [[nodiscard]] bool Owns(const PartInFile& part, const platform::Text& stored) const;
  /// Takes the section of that stored name out of the part; false when it was not in it.
  bool Disown(PartInFile& part, const platform::Text& stored) const;

  controls::ListView& full_;
  platform::TextConversion& conversion_;
  std::unordered_map<controls::RowId, PartInFile> parts_;
  std::unordered_set<controls::RowId> overwritten_;
  std::vector<UnsavedRow> waiting_;  ///< in no list until the next load
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
