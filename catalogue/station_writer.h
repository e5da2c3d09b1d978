#pragma once
// Writes rows of the two lists to the station file, and keeps track of which rows it contains.
// Not when to write, which the buttons' features decide (catalogue/station_editor.h,
// catalogue/station_views.h).

#include <vector>

#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/notices.h"
#include "app/state/station.h"
#include "catalogue/deleted_entries.h"
#include "catalogue/station_file.h"
#include "catalogue/station_icons.h"
#include "catalogue/unsaved_rows.h"
#include "controls/list_view.h"

namespace catalogue {

/// Each operation is one replacement of the file. When it fails, the lists change all the same, a notice
/// reports it, and what the file now lacks is an unsaved change: it is kept in the full list like unsaved
/// rows, even when a filter view was edited.
class StationWriter {
 public:
  StationWriter(const StationFile& file, app::Settings& settings, app::Notices& notices,
                const StationIcons& icons, app::ListPair lists, UnsavedRows& unsaved,
                DeletedEntries& deleted);

  /// Sets one cell of a row and writes it.
  void WriteField(controls::ListView& list, controls::RowId row, const app::StationField& field,
                  const platform::Text& value);

  /// Appends a row and writes its section; the number goes to the file only, unchanged.
  void AddStation(controls::ListView& list, const app::Station& station);

  /// Deletes the section of the row's name, changes the row and writes its section again; the number goes to
  /// the file only, and only from 1 upwards.
  void UpdateStation(controls::ListView& list, controls::RowId row, const app::Station& station);

  /// Deletes the section of the row's name and removes the row.
  void DeleteStation(controls::ListView& list, controls::RowId row);

  /// Writes every row of the full list, in list order; of equal names the later one's values win. Afterwards
  /// the catalogue counts as changed only if that failed.
  void WriteFullList();

 private:
  enum class Number { kShown, kNotShown };
  static void SetCells(controls::ListView& list, controls::RowId row, const app::Station& station,
                       Number number);
  void KeepUnlisted(const controls::ListView& list, controls::RowId row, const app::Station& station);
  void SectionIsDeleted(const platform::Text& name, controls::RowId row);
  void RemoveRowOnly(controls::ListView& list, controls::RowId row, DeletedEntry entry);
  void DeleteSections(const std::vector<platform::Text>& names);
  void KeepField(const controls::ListView& list, controls::RowId row, const app::StationField& field);
  void KeepStation(controls::ListView& list, controls::RowId row, const platform::Text& old_name,
                   const app::Station& station);
  [[nodiscard]] controls::RowId CarryOver(const controls::ListView& view, controls::RowId row,
                                          const platform::Text& name);
  [[nodiscard]] static controls::ListRow CopyOf(const controls::ListView& list, controls::RowId row);
  void ReportUnsaved();
  void ReportFailure();
  [[nodiscard]] bool IsFull(const controls::ListView& list) const { return &list == &lists_.full; }

  const StationFile& file_;
  app::Settings& settings_;
  app::Notices& notices_;
  const StationIcons& icons_;
  app::ListPair lists_;
  UnsavedRows& unsaved_;
  DeletedEntries& deleted_;
};

}  // namespace catalogue
