#pragma once
// Builds the features of the catalogue, its playlist files included, and connects them. Not any feature's
// behaviour, and not what a selected row starts (window/playing.h).

#include <functional>

#include "app/state/notices.h"
#include "catalogue/deleted_entries.h"
#include "catalogue/row_commands.h"
#include "catalogue/station_editor.h"
#include "catalogue/station_file.h"
#include "catalogue/station_icons.h"
#include "catalogue/station_lists.h"
#include "catalogue/station_store.h"
#include "catalogue/station_views.h"
#include "catalogue/station_writer.h"
#include "catalogue/unsaved_rows.h"
#include "catalogue/unsaved_rows_keeper.h"
#include "playlist/list_opening.h"
#include "playlist/m3u_export.h"
#include "playlist/m3u_import.h"
#include "window/foundation.h"

namespace window {

/// Each feature is given only features declared above it.
struct Catalogue {
  /// What the catalogue triggers in other features.
  struct Actions {
    std::function<void()> show_station_details;  ///< of the selected row
    std::function<void()> start_playing;         ///< as the Start button
    std::function<void()> launch_recorder;       ///< for the selected row
    std::function<void(controls::ListView&, controls::RowId)> record_row;
    /// With this link in its field; returns when the dialog is closed.
    std::function<void(const platform::Text&)> show_new_station_dialog;
  };

  Catalogue(const Foundation& base, app::Notices& notices, const Actions& actions);

  catalogue::StationIcons icons;
  catalogue::StationLists lists;
  catalogue::UnsavedRows unsaved_rows;
  catalogue::StationFile station_file;
  catalogue::UnsavedRowsKeeper keeper;
  catalogue::StationStore store;
  catalogue::DeletedEntries deleted;
  catalogue::StationWriter writer;
  catalogue::StationViews views;
  catalogue::StationEditor editor;
  catalogue::RowCommands row_commands;
  playlist::M3uExport m3u_export;
  playlist::M3uImport m3u_import;
  playlist::ListOpening list_opening;

 private:
  using Selects = playlist::ListOpening::Actions::Selects;
  void LeaveFilter(Selects selects);
  void AddStation(const platform::Text& link);
};

}  // namespace window
