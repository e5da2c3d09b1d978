#pragma once
// The catalogue over doubles of its environment: lists, store, views and editor of one window.
// Not the whole window; the journeys start that.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "app/forms/form1.h"
#include "app/settings/ini_procedures.h"
#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/station.h"
#include "app/state/window_state.h"
#include "catalogue/station_editor.h"
#include "catalogue/station_icons.h"
#include "catalogue/station_lists.h"
#include "catalogue/station_store.h"
#include "catalogue/station_views.h"
#include "tests/support/fake_notices.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_profile.h"
#include "tests/support/plain_string_order.h"
#include "tests/support/plain_text_conversion.h"

namespace catalogue {

using platform::Text;

inline constexpr char16_t kStationFile[] = u"C:\\Cfg\\Funkhaus.ini";

class CatalogueTest : public ::testing::Test {
 protected:
  CatalogueTest() {
    settings.SettingsFolder = u"C:\\Cfg\\";
    settings.StationFileName = u"Funkhaus.ini";
    StationLists::CreateColumns(SymbolListview);
    StationLists::CreateColumns(ExplorerListFilter);
    for (const char16_t* genre : {u"80er/90er", u"Pop & Hits", u"Electro,Black Music", u"Dance", u"Dance"}) {
      Combo1.AddItem(genre);
    }
    Combo1.SetListIndex(0);
  }

  void AddStation(const Text& name, const Text& genre = u"", const Text& link = u"",
                  const Text& favourite = u"", const Text& number = u"") {
    profile.Set(kStationFile, name, u"Link", link);
    profile.Set(kStationFile, name, u"Genre", genre);
    profile.Set(kStationFile, name, u"Favorit", favourite);
    profile.Set(kStationFile, name, u"M3uNr", number);
  }

  static std::vector<Text> Names(const controls::ListView& list) {
    std::vector<Text> names;
    for (const controls::ListRow& row : list.Rows()) names.push_back(row.cells[app::kNameCell]);
    return names;
  }

  static controls::RowId RowNamed(const controls::ListView& list, const Text& name) {
    for (const controls::ListRow& row : list.Rows()) {
      if (row.cells[app::kNameCell] == name) return row.id;
    }
    return controls::RowId::kNone;
  }

  static controls::RowId AddRow(controls::ListView& list, const Text& name, const Text& genre = u"",
                                const Text& link = u"", const Text& favourite = u"",
                                const Text& number = u"") {
    controls::ListRow row;
    row.cells = {name, genre, link, favourite, u"", number};
    return list.AddRow(row);
  }

  test_support::MemoryProfile profile;
  test_support::MemoryFiles files;
  test_support::FakeEnvironment environment;
  test_support::FakeIcons icon_port;
  test_support::FakeDialogs dialogs;
  test_support::FakeNotices notices;
  test_support::PlainTextConversion conversion;
  test_support::PlainStringOrder order;

  app::Settings settings;
  app::WindowState state;
  app::IniProcedures ini{settings, profile, files, environment};

  app::Form1 form1;
  controls::ListView& SymbolListview = form1.SymbolListview;
  controls::ListView& ExplorerListFilter = form1.ExplorerListFilter;
  controls::CheckBox& Check1 = form1.Check1;
  controls::CheckBox& Check2 = form1.Check2;
  controls::CheckBox& Check3 = form1.Check3;
  controls::ComboBox& Combo1 = form1.Combo1;
  controls::Frame& Frame2 = form1.Frame2;
  controls::CommandButton& CommandButton1 = form1.CommandButton1;
  controls::CommandButton& CommandButton2 = form1.CommandButton2;
  std::array<controls::TextBox, 2>& TextBox1 = form1.TextBox1;
  controls::UpDownTextBox& UpDownTextBox1 = form1.UpDownTextBox1;
  std::array<controls::CommandButton, 6>& Command8 = form1.Command8;
  app::ListPair lists{SymbolListview, ExplorerListFilter};

  int details_shown = 0;
  int started = 0;
  int recorder_launches = 0;
  std::function<void()> new_station_dialog = [] {};

  StationIcons icons{{icon_port, files, conversion, dialogs}, lists};
  StationLists station_lists{lists, order, state, {[this] { ++details_shown; }, [this] { ++started; }}};
  UnsavedRows unsaved{SymbolListview, conversion};
  StationFile station_file{{profile, conversion}, ini, settings};
  StationStore store{
      station_file, conversion, icons, state, lists, unsaved, [this](controls::ListView& list) {
        station_lists.SortAgain(list);
      }};
  controls::CommandButton& UndoDelete = form1.UndoDelete;
  DeletedEntries deleted{UndoDelete, lists, station_file, settings, store, unsaved, notices};
  StationWriter writer{station_file, settings, notices, icons, lists, unsaved, deleted};
  StationViews views{{Check1, Check2, Check3, Combo1, Frame2, CommandButton1, CommandButton2, lists},
                     store,
                     station_lists,
                     writer,
                     state,
                     dialogs};
  StationEditor editor{
      {EditorFields(form1), Check1, Command8, CommandButton1, CommandButton2, lists},
      writer,
      settings,
      state,
      dialogs,
      {[this] { ++recorder_launches; }, [this](const platform::Text&) { new_station_dialog(); }}};
};

}  // namespace catalogue
