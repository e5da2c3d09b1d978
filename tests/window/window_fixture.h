#pragma once
// A main window without widgets over doubles of its whole platform, and what a test needs to act on it.
// Not real files, servers or sound; the journeys and the platform's tests have those.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/state/station.h"
#include "catalogue/unsaved_rows_file.h"
#include "platform/values/portable_property_values.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_profile.h"
#include "tests/support/memory_record_files.h"
#include "tests/support/plain_string_order.h"
#include "tests/support/plain_text_conversion.h"
#include "tests/support/recording_media.h"
#include "tests/support/scripted_internet.h"
#include "window/main_window.h"

namespace app {

inline constexpr char16_t kOptIniPath[] = u"C:\\Daten\\Ordnerzentrale\\Opt.ini";
inline constexpr char16_t kKeptRowsPath[] = u"C:\\Zustand\\0815.unsaved";
inline constexpr char16_t kStationFilePath[] = u"C:\\Daten\\Ordnerzentrale\\Funkhaus.ini";

class WindowTest : public ::testing::Test {
 protected:
  WindowTest() {
    environment.variables[u"APPDATA"] = u"C:\\Daten";
    files.folders = {u"C:\\Daten\\", u"C:\\Daten\\Ordnerzentrale\\"};
    files.files[kOptIniPath] = "";
    message_loop.on_sleep = [this](std::uint32_t milliseconds) {
      clock.seconds_since_midnight += milliseconds / 1000.0;
    };
    // A stream that sends nothing must meet the readers' time limit.
    internet.before_read = [this] { clock.seconds_since_midnight += 0.5; };
  }

  void AddStation(const Text& name, const Text& link, const Text& genre = u"Rock",
                  const Text& favourite = u"", const Text& number = u"") {
    profile.Set(kStationFilePath, name, u"Link", link);
    profile.Set(kStationFilePath, name, u"Genre", genre);
    profile.Set(kStationFilePath, name, u"Favorit", favourite);
    profile.Set(kStationFilePath, name, u"M3uNr", number);
  }

  void Construct() {
    window = std::make_unique<window::MainWindow>(
        window::Platform{
            profile,   files,           record_files, environment, conversion,       string_order,   icons,
            internet,  requests,        media,        media,       values,           dialogs,        shell,
            clipboard, system_messages, message_loop, clock,       playback_monitor, desktop.Ports()},
        [this](app::Form2& form) {
          if (on_new_station) on_new_station(form);
        });
  }
  void Start() {
    Construct();
    window->Load();
  }
  Form1& Form() { return window->Controls(); }
  void Select(const Text& name) { SelectIn(Form().SymbolListview, name); }
  static void SelectIn(controls::ListView& list, const Text& name) {
    list.Select(RowNamed(list, name));
    ASSERT_NE(list.SelectedRow(), controls::RowId::kNone);
  }
  static controls::RowId RowNamed(const controls::ListView& list, const Text& name) {
    for (const controls::ListRow& row : list.Rows()) {
      if (row.cells[app::kNameCell] == name) return row.id;
    }
    return controls::RowId::kNone;
  }
  static std::vector<Text> Names(const controls::ListView& list) {
    std::vector<Text> names;
    for (const controls::ListRow& row : list.Rows()) names.push_back(row.cells[app::kNameCell]);
    return names;
  }
  /// The names of the rows that the next start would put back.
  std::vector<Text> KeptRows() {
    const auto file = files.files.find(kKeptRowsPath);
    if (file == files.files.end()) return {};
    std::vector<Text> names;
    const auto kept = catalogue::ParseUnsavedRows(file->second, conversion).value();
    for (const auto& row : kept.rows) {
      names.push_back(row.row.cells[app::kNameCell]);
    }
    return names;
  }
  bool HasKeptRows() const { return files.files.contains(kKeptRowsPath); }
  /// The texts of the boxes shown so far.
  std::vector<Text> BoxTexts() const {
    std::vector<Text> texts;
    for (const auto& box : dialogs.boxes) texts.push_back(box.text);
    return texts;
  }

  test_support::MemoryProfile profile;
  test_support::MemoryFiles files;
  test_support::MemoryRecordFiles record_files;
  test_support::FakeEnvironment environment;
  test_support::FakeIcons icons;
  test_support::ScriptedInternet internet;
  test_support::ScriptedXmlHttpRequests requests;
  test_support::RecordingMedia media;
  test_support::FakeDialogs dialogs;
  test_support::FakeShell shell;
  test_support::FakeClipboard clipboard;
  test_support::FakeSystemMessages system_messages;
  test_support::FakeMessageLoop message_loop;
  test_support::FakeClock clock;
  test_support::FakePlaybackMonitor playback_monitor;
  test_support::FakeDesktop desktop;
  test_support::PlainTextConversion conversion;
  test_support::PlainStringOrder string_order;
  platform::values::PortablePropertyValues values;
  std::function<void(app::Form2&)> on_new_station;
  std::unique_ptr<window::MainWindow> window;
};

}  // namespace app
