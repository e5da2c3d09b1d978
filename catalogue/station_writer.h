#pragma once
// Writes rows of the two lists to the station file, and keeps account of which rows it holds.
// Not when to write, which the buttons' features decide (catalogue/station_editor.h,
// catalogue/station_views.h).

#include <vector>

#include "app/settings/ini_procedures.h"
#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/notices.h"
#include "app/state/station_row.h"
#include "catalogue/deleted_entries.h"
#include "catalogue/station_icons.h"
#include "catalogue/unsaved_rows.h"
#include "controls/list_view.h"
#include "ports/private_profile.h"

namespace catalogue {

/// Each operation is one replacement of the file. When it fails, the lists change all the same, a notice says
/// so, and what the file lacks now is an unsaved change: it stands in the full list, as unsaved rows do, also
/// when a filter view was edited.
class StationWriter {
 public:
  StationWriter(platform::PrivateProfile& profile, app::IniProcedures& ini, app::Settings& settings,
                app::Notices& notices, const StationIcons& icons, app::ListPair lists, UnsavedRows& unsaved,
                DeletedEntries& deleted);

  /// What the editor's fields say of a station.
  struct Station {
    platform::Text name;
    platform::Text link;
    platform::Text genre;
    platform::Text favourite;  ///< "1" or empty
    platform::Text number;     ///< of the entry within a playlist link, as typed
  };

  /// Sets one cell of a row, one of those with a key, and writes it.
  void WriteCell(controls::ListView& list, controls::RowId row, app::StationCell cell,
                 const platform::Text& value);

  /// Appends a row and writes its section; the number goes to the file only, as it stands.
  void AddStation(controls::ListView& list, const Station& station);

  /// Deletes the section of the row's name, changes the row and writes its section anew; the number goes to
  /// the file only, and only from 1 upwards.
  void UpdateStation(controls::ListView& list, controls::RowId row, const Station& station);

  /// Deletes the section of the row's name and removes the row.
  void DeleteStation(controls::ListView& list, controls::RowId row);

  /// Writes every row of the full list, in list order; of equal names the later one's values win. The
  /// catalogue counts as changed afterwards exactly when that failed.
  void WriteFullList();

 private:
  void WriteCommonKeys(const Station& station);
  enum class Number { kShown, kNotShown };
  static void SetCells(controls::ListView& list, controls::RowId row, const Station& station, Number number);
  void KeepUnlisted(const controls::ListView& list, controls::RowId row, const Station& station);
  void SectionIsDeleted(const platform::Text& name, controls::RowId row);
  void RemoveRowOnly(controls::ListView& list, controls::RowId row, DeletedEntry entry);
  void DeleteSections(const std::vector<platform::Text>& names);
  void KeepCell(const controls::ListView& list, controls::RowId row, app::StationCell cell);
  void KeepStation(controls::ListView& list, controls::RowId row, const platform::Text& old_name,
                   const Station& station);
  [[nodiscard]] controls::RowId CarryOver(const controls::ListView& view, controls::RowId row,
                                          const platform::Text& name);
  [[nodiscard]] static controls::ListRow CopyOf(const controls::ListView& list, controls::RowId row);
  void ReportUnsaved();
  void ReportFailure();
  [[nodiscard]] bool IsFull(const controls::ListView& list) const { return &list == &lists_.full; }

  platform::PrivateProfile& profile_;
  app::IniProcedures& ini_;
  app::Settings& settings_;
  app::Notices& notices_;
  const StationIcons& icons_;
  app::ListPair lists_;
  UnsavedRows& unsaved_;
  DeletedEntries& deleted_;
};

}  // namespace catalogue
