#pragma once
// The editor beside the list: its buttons take over, add, delete and save, and open the new-station dialog.
// Not the filling of its fields (catalogue/station_details.h) nor the writing (catalogue/station_writer.h).

#include <array>
#include <cstddef>
#include <functional>

#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/station_row.h"
#include "app/state/window_state.h"
#include "catalogue/station_writer.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "controls/text_box.h"
#include "ports/dialogs.h"

namespace catalogue {

class StationEditor {
 public:
  struct Parts {
    std::array<controls::TextBox, 2>& TextBox1;        ///< station name, link
    controls::ComboBox& Combo1;                        ///< genre
    controls::CheckBox& Check1;                        ///< genre view
    controls::CheckBox& Check2;                        ///< favourite mark
    controls::UpDownTextBox& UpDownTextBox1;           ///< number of the entry within a playlist link
    std::array<controls::CommandButton, 6>& Command8;  ///< take over number, all, link; delete; genre; record
    controls::CommandButton& CommandButton1;           ///< saves the list
    controls::CommandButton& CommandButton2;           ///< new station
    app::ListPair lists;
  };

  /// What the editor's buttons start elsewhere.
  struct Actions {
    std::function<void()> launch_recorder;          ///< Command8(5)
    std::function<void()> show_new_station_dialog;  ///< returns when the dialog is closed
  };

  StationEditor(Parts parts, StationWriter& writer, app::Settings& settings, app::WindowState& state,
                platform::Dialogs& dialogs, Actions actions);

  /// Indices 0 to 5; any other does nothing.
  void Command8_Click(std::size_t Index);
  /// Saves the full list; refuses with a message while a filter view is active.
  void CommandButton1_Click();
  /// Opens the new-station dialog, then offers to save.
  void CommandButton2_Click();

 private:
  void TakeOverField(app::StationCell cell, const platform::Text& value);
  void TakeOverAll();
  void AddEntry();
  void UpdateEntry(controls::ListView& list, controls::RowId row);
  void DeleteEntry();
  void DetailsWereEdited();
  [[nodiscard]] StationWriter::Station Fields() const;

  Parts parts_;
  StationWriter& writer_;
  app::Settings& settings_;
  app::WindowState& state_;
  platform::Dialogs& dialogs_;
  Actions actions_;
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
