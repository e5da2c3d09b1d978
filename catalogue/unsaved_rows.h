#pragma once
// Which rows of the full list the station file does not hold whole, and what it holds of each of them.
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

/// What the station file holds of an unsaved row.
struct PartInFile {
  std::set<app::StationCell> cells;      ///< written one by one, in the section of the row's name
  std::vector<platform::Text> sections;  ///< names of the sections that exist for this row's sake only
};

struct UnsavedRow {
  controls::ListRow row;
  PartInFile part;
};

/// A row of the full list is unsaved from its being added until the station file holds it whole; saved rows
/// are absent from here. Of an unsaved row it is known which cells were written to the file one by one - only
/// these are read back when the list is loaded again - and which sections exist for its sake only, because
/// such writes made them; these are no rows of their own. Once a filter view has deleted the last of these
/// sections, or renamed the station away from it, the user has deleted the row, and the next loading drops
/// it.
///
/// A saved row over which another one of its name was written is overwritten: the next loading drops it,
/// unless the other one is deleted before.
///
/// Names are compared as the file stores them (catalogue/stored_name.h).
class UnsavedRows {
 public:
  /// Every row that is added to `full` counts as unsaved until it is marked as saved.
  UnsavedRows(controls::ListView& full, platform::TextConversion& conversion);

  [[nodiscard]] bool Contains(controls::RowId row) const { return parts_.contains(row); }
  /// Whether the file holds the row, and not another one of its name.
  [[nodiscard]] bool IsSaved(controls::RowId row) const {
    return !parts_.contains(row) && !overwritten_.contains(row);
  }
  /// The row for which a section of that name stands in the file: a saved one, or one whose own it is; kNone
  /// when the full list has none.
  [[nodiscard]] controls::RowId RowOf(const platform::Text& name) const;
  /// The same, and a row that was to come back with the next loading comes back now.
  [[nodiscard]] controls::RowId RowOfAnyList(const platform::Text& name);
  /// Whether a section of that name is the own one of the row of which this is the part.
  [[nodiscard]] bool IsOwnSection(const PartInFile& part, const platform::Text& name) const {
    return Owns(part, Stored(name));
  }
  /// The sections that are the row's own under an earlier name: it was renamed, and the file could not be
  /// written.
  [[nodiscard]] std::vector<platform::Text> LeftSections(controls::RowId row) const;
  /// What the file holds of a row that is not saved.
  [[nodiscard]] PartInFile PartOf(controls::RowId row) const;
  /// The unsaved rows with all their cells in the order of the list, then those that are in no list but come
  /// back when it is loaded.
  [[nodiscard]] std::vector<UnsavedRow> All() const;

  /// Raised when a call below has reported what was written or deleted. Rows that come, go, move or change
  /// are announced by the list.
  controls::Event<> Changed;

  /// Whether two names mean the same section of the station file.
  [[nodiscard]] bool AreOneSection(const platform::Text& name, const platform::Text& other) const;

  /// Appends such rows to the full list. At start-up, before the list is loaded for the first time, so that
  /// the loading reads their cells back and leaves out the sections that are theirs.
  void PutBack(std::vector<UnsavedRow> rows);
  /// The row is unsaved from here on.
  void Mark(controls::RowId row, PartInFile part);
  /// The file holds the row whole, or nobody wants it any more.
  void Remove(controls::RowId row);
  void Clear();

  /// The full list is about to be emptied: what the file holds a part of comes back with the next loading,
  /// as saved rows do.
  void ListIsEmptied();

  enum class SectionWas { kThere, kMissing };
  /// One cell of a row was written to the file; `was` tells what its section was before.
  void CellWritten(controls::RowId row, app::StationCell cell, SectionWas was);
  /// One cell of a row could not be written, so that it is newer than the file from here on.
  void CellNotWritten(controls::RowId row, app::StationCell cell);
  /// A filter view wrote one cell of the station of that name: the row for whose sake its section exists
  /// takes the value.
  void CellWrittenInView(const platform::Text& name, app::StationCell cell, const platform::Text& value);

  /// The file holds a whole station of that name now, written for `row`, or for a filter view (kNone). A row
  /// whose name the file cannot list stays unsaved.
  void StationWritten(const platform::Text& name, controls::RowId row);
  /// A whole row could not be written. What the file holds of it still bears the row's old name.
  void StationNotWritten(controls::RowId row, const platform::Text& old_name);
  /// The file holds every row of the full list.
  void ListWritten();

  /// The last section of that name was deleted for a row of the full list, which is gone or has another name
  /// now. Saved rows of the same name become unsaved; a section of that name would be theirs. True when there
  /// were any.
  bool StationDeleted(const platform::Text& name, controls::RowId row);
  /// The section could not be deleted, and the row is about to leave the full list: it comes back with the
  /// next loading, as saved rows do.
  void StationNotDeleted(controls::RowId row);
  /// A filter view deleted the section of that name.
  void StationDeletedInView(const platform::Text& name);

 private:
  /// A row is newer than the file; `part` is what the file holds of it if it was saved until now.
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
  std::vector<UnsavedRow> waiting_;  ///< in no list until the next loading
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
