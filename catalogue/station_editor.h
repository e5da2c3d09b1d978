#pragma once
// The editor next to the list: its buttons apply, add, delete and save, and open the new-station dialog.
// Not the filling of its fields (catalogue/station_details.h) nor the writing (catalogue/station_writer.h).

#include <array>
#include <cstddef>
#include <functional>

#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/station.h"
#include "app/state/window_state.h"
#include "catalogue/editor_fields.h"
#include "catalogue/station_writer.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "ports/dialogs.h"

namespace catalogue {

class StationEditor {
 public:
  struct Parts {
    EditorFields fields;
    controls::CheckBox& Check1;                        ///< genre view
    std::array<controls::CommandButton, 6>& Command8;  ///< apply number, all, link; delete; genre; record
    controls::CommandButton& CommandButton1;           ///< saves the list
    controls::CommandButton& CommandButton2;           ///< new station
    app::ListPair lists;
  };

  /// What the editor's buttons trigger in other features.
  struct Actions {
    std::function<void()> launch_recorder;                                    ///< Command8(5)
    std::function<void(const platform::Text& link)> show_new_station_dialog;  ///< until it is closed
  };

  StationEditor(Parts parts, StationWriter& writer, app::Settings& settings, app::WindowState& state,
                platform::Dialogs& dialogs, Actions actions);

  /// Indices 0 to 5; any other does nothing.
  void Command8_Click(std::size_t Index);
  /// Saves the full list; refuses with a message while a filter view is active.
  void CommandButton1_Click();
  /// Opens the new-station dialog, then offers to save.
  void CommandButton2_Click() { AddNewStation({}); }
  /// The same with a link in the dialog's field.
  void AddNewStation(const platform::Text& link);

 private:
  void ApplyField(const app::StationField& field);
  void ApplyAll();
  void AddEntry();
  void UpdateEntry(controls::ListView& list, controls::RowId row);
  void DeleteEntry();
  void DetailsWereEdited();

  Parts parts_;
  StationWriter& writer_;
  app::Settings& settings_;
  app::WindowState& state_;
  platform::Dialogs& dialogs_;
  Actions actions_;
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
