#pragma once
// A main window without widgets over the program's own disk adapters: its files are those of a real start.
// Not real servers, sound or dialogs: those are doubles.

#include <functional>
#include <memory>
#include <vector>

#include "app/state/station.h"
#include "platform/icu/string_order.h"
#include "platform/icu/text_conversion.h"
#include "platform/ini/private_profile.h"
#include "platform/posix/environment.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "platform/values/portable_property_values.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_record_files.h"
#include "tests/support/recording_media.h"
#include "tests/support/scripted_internet.h"
#include "window/main_window.h"

namespace program_test {

/// Settings and state lie where the environment's variables say.
class DiskWindow {
 public:
  DiskWindow() {
    message_loop.on_sleep = [this](std::uint32_t milliseconds) {
      clock.seconds_since_midnight += milliseconds / 1000.0;
    };
    internet.before_read = [this] { clock.seconds_since_midnight += 0.5; };
    window = std::make_unique<window::MainWindow>(
        window::Platform{
            profile,   files,           record_files, environment, conversion,       string_order,   icons,
            internet,  requests,        media,        media,       values,           dialogs,        shell,
            clipboard, system_messages, message_loop, clock,       playback_monitor, desktop.Ports()},
        [this](app::Form2& form) { in_new_station_dialog(form); });
    window->Load();
  }
  app::Form1& Form() { return window->Controls(); }
  void Select(const platform::Text& name) {
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) {
      if (row.cells[app::kNameCell] == name) {
        Form().SymbolListview.Select(row.id);
        return;
      }
    }
  }
  std::vector<platform::Text> Names() {
    std::vector<platform::Text> names;
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) {
      names.push_back(row.cells[app::kNameCell]);
    }
    return names;
  }

  platform::posix::PosixNativePaths paths;
  platform::icu::IcuTextConversion conversion;
  platform::icu::IcuStringOrder string_order;
  platform::posix::PosixProfileFiles profile_files;
  platform::ini::IniPrivateProfile profile{paths, profile_files, conversion};
  platform::posix::PosixFiles files{paths};
  platform::posix::PosixEnvironment environment{paths};
  platform::values::PortablePropertyValues values;
  test_support::MemoryRecordFiles record_files;
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
  std::function<void(app::Form2&)> in_new_station_dialog;
  std::unique_ptr<window::MainWindow> window;
};

}  // namespace program_test
