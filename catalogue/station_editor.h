#pragma once
// The editor beside the list: takes fields over into the selected row and the station file, deletes, saves
// the list, opens the new-station dialog. Not the filling of its fields (catalogue/station_details.h).

#include <array>
#include <cstddef>
#include <functional>

#include "app/ini_procedures.h"
#include "app/settings.h"
#include "app/window_state.h"
#include "catalogue/station_icons.h"
#include "catalogue/station_store.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "controls/text_box.h"
#include "platform/dialogs.h"
#include "platform/private_profile.h"

namespace catalogue {

class StationEditor {
 public:
  struct Parts {
    std::array<controls::TextBox, 2>& TextBox1;
    controls::ComboBox& Combo1;
    controls::CheckBox& Check1;
    controls::CheckBox& Check2;
    controls::UpDownTextBox& UpDownTextBox1;
    std::array<controls::CommandButton, 6>& Command8;
    controls::CommandButton& CommandButton1;
    controls::CommandButton& CommandButton2;
    controls::ListPair lists;
  };

  /// What the editor's buttons start elsewhere.
  struct Actions {
    std::function<void()> launch_recorder;          ///< Command8(5)
    std::function<void()> show_new_station_dialog;  ///< returns when the dialog is closed
  };

  StationEditor(Parts parts, StationStore& store, const StationIcons& icons, app::IniProcedures& ini,
                platform::PrivateProfile& profile, app::Settings& settings, app::WindowState& state,
                platform::Dialogs& dialogs, Actions actions);

  /// Indices 0 to 5; any other does nothing.
  void Command8_Click(std::size_t Index);
  /// Saves the full list; refuses with a message while a filter view is active.
  void CommandButton1_Click();
  /// Opens the new-station dialog, then offers to save.
  void CommandButton2_Click();

  /// Writes every row of the full list, in list order, to the station file, without any message.
  void WriteFullList();

  /// For the end of the session, when nobody can answer: writes the full list without any message, also in
  /// a filter view, when the catalogue counts as changed or the station file lacks one of its rows.
  void SaveUnsavedRows();

 private:
  void TakeOverField(std::size_t cell, const platform::Text& key, const platform::Text& value);
  void TakeOverAll();
  void AddEntry();
  void UpdateEntry(controls::ListView& list, controls::RowId row);
  void DeleteEntry();
  bool WriteKey(const platform::Text& section, const platform::Text& key, const platform::Text& value);
  void WriteCommonKeys(const platform::Text& name);
  [[nodiscard]] platform::Text FavouriteMark() const;
  void MarkSaved(const controls::ListView& list, controls::RowId row);
  [[nodiscard]] bool HasUnsavedRows() const;

  Parts parts_;
  StationStore& store_;
  const StationIcons& icons_;
  app::IniProcedures& ini_;
  platform::PrivateProfile& profile_;
  app::Settings& settings_;
  app::WindowState& state_;
  platform::Dialogs& dialogs_;
  Actions actions_;
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
