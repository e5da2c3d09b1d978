#pragma once
// A main window without widgets over real files, and a scratch folder for all of them.
// Not real servers or sound: those are doubles.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/state/station.h"
#include "platform/ini/private_profile.h"
#include "platform/values/portable_property_values.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_record_files.h"
#include "tests/support/plain_disk.h"
#include "tests/support/plain_string_order.h"
#include "tests/support/plain_text_conversion.h"
#include "tests/support/recording_media.h"
#include "tests/support/scripted_internet.h"
#include "tests/support/temp_folder.h"
#include "window/main_window.h"

namespace app {

inline constexpr const char* kStationFile = "config/Ordnerzentrale/Funkhaus.ini";
inline constexpr const char* kOptFile = "config/Ordnerzentrale/Opt.ini";

class CatalogueJourney : public ::testing::Test {
 protected:
  /// All files are below `parent`.
  explicit CatalogueJourney(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
      : folder(parent) {
    std::filesystem::create_directories(folder.Path() / "config");
    std::filesystem::create_directories(folder.Path() / "program");
    environment.variables[u"APPDATA"] = folder.TextPath("config");
    environment.program_folder = folder.TextPath("program");
    environment.state_file = folder.TextPath("state");
    message_loop.on_sleep = [this](std::uint32_t milliseconds) {
      clock.seconds_since_midnight += milliseconds / 1000.0;
    };
    internet.before_read = [this] { clock.seconds_since_midnight += 0.5; };
  }

  void Start(const std::string& stations) {
    folder.Write(kStationFile, stations);
    Restart();
  }
  /// A new window with what the last one left on the disk.
  void Restart() {
    window.reset();
    window = std::make_unique<window::MainWindow>(
        window::Platform{
            profile,   files,           record_files, environment, conversion,       string_order,   icons,
            internet,  requests,        media,        media,       values,           dialogs,        shell,
            clipboard, system_messages, message_loop, clock,       playback_monitor, desktop.Ports()},
        [this](app::Form2& form) {
          form.TextBox1[0].SetText(new_name);
          form.TextBox1[1].SetText(new_link);
          form.CommandButton1.Click();
        });
    window->Load();
  }
  /// No file can be written while it is.
  void SetDiskFull(bool is_full) { profile_files.is_full = files.is_full = is_full; }
  Form1& Form() { return window->Controls(); }
  [[nodiscard]] std::string Stations() const { return folder.Read(kStationFile); }

  static controls::RowId RowNamed(const controls::ListView& list, const Text& name) {
    for (const controls::ListRow& row : list.Rows()) {
      if (row.cells[app::kNameCell] == name) return row.id;
    }
    return controls::RowId::kNone;
  }
  void Select(const Text& name) { SelectIn(Form().SymbolListview, name); }
  static void SelectIn(controls::ListView& list, const Text& name) {
    ASSERT_TRUE(list.Select(RowNamed(list, name)));
  }
  static std::vector<Text> Names(const controls::ListView& list) {
    std::vector<Text> names;
    for (const controls::ListRow& row : list.Rows()) names.push_back(row.cells[app::kNameCell]);
    return names;
  }
  void FillFields(const Text& name, const Text& link, const Text& genre, const Text& number) {
    Form().TextBox1[0].SetText(name);
    Form().TextBox1[1].SetText(link);
    Form().Combo1.Type(genre);
    Form().UpDownTextBox1.SetText(number);
  }

  test_support::TempFolder folder;
  test_support::PlainNativePaths paths;
  test_support::PlainTextConversion conversion;
  test_support::PlainStringOrder string_order;
  test_support::PlainProfileFiles profile_files;
  platform::ini::IniPrivateProfile profile{paths, profile_files, conversion};
  test_support::PlainFiles files;
  platform::values::PortablePropertyValues values;
  test_support::MemoryRecordFiles record_files;
  test_support::FakeEnvironment environment;
  test_support::FakeIcons icons;
  test_support::ScriptedInternet internet;
  test_support::ScriptedXmlHttpRequests requests;
  test_support::RecordingMedia media;
  test_support::FakeDialogs dialogs;
  test_support::FakeShell shell;
  test_support::FakeClipboard clipboard;
  test_support::FakeDesktop desktop;
  test_support::FakeSystemMessages system_messages;
  test_support::FakeMessageLoop message_loop;
  test_support::FakeClock clock;
  test_support::FakePlaybackMonitor playback_monitor;
  Text new_name = u"Neu";
  Text new_link = u"http://neu";
  std::unique_ptr<window::MainWindow> window;
};

}  // namespace app
