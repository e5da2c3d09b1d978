#include "programs/windows/program.h"

#include <optional>
#include <string>

#include "app/forms/form2.h"
#include "platform/ini/private_profile.h"
#include "platform/win32/system/clipboard.h"
#include "platform/win32/system/clock.h"
#include "platform/win32/system/environment.h"
#include "platform/win32/system/files.h"
#include "platform/win32/system/native_paths.h"
#include "platform/win32/system/profile_files.h"
#include "platform/win32/system/record_files.h"
#include "platform/win32/system/shell.h"
#include "platform/win32/system/sleep_inhibitor.h"
#include "platform/win32/system/system_messages.h"
#include "platform/win32/system/users_guide.h"
#include "platform/win32/text/string_order.h"
#include "platform/win32/text/text_conversion.h"
#include "platform/win32/ui/dialogs.h"
#include "platform/win32/ui/drop_target.h"
#include "platform/win32/ui/icons.h"
#include "platform/win32/ui/media_keys.h"
#include "platform/win32/ui/message_loop.h"
#include "platform/win32/ui/notifications.h"
#include "platform/win32/ui/program_windows.h"
#include "platform/win32/ui/start_requests.h"
#include "platform/win32/ui/turns.h"
#include "platform/win32/ui/undisturbed_shell.h"
#include "programs/windows/internet_connection.h"
#include "programs/windows/sound_connection.h"
#include "window/main_window.h"

using namespace platform::win32;

/// Declared in the order of construction; the window is destroyed before the adapters that it uses.
struct Program::Parts {
  void ShowNewStation(app::Form2& form) { RunNewStationDialog(form, window->Handle(), icons, message_loop); }

  /// In the user's folder for state, one for each settings folder.
  [[nodiscard]] platform::Text MemoryFile() {
    const app::Settings& settings = logic.GetSettings();
    return environment.StateFile(settings.SettingsFolder + settings.StationFileName, u".window");
  }

  Win32NativePaths paths;
  Win32Environment environment;
  Win32TextConversion conversion;
  Win32StringOrder string_order;
  Win32ProfileFiles profile_files;
  platform::ini::IniPrivateProfile profile{paths, profile_files, conversion};
  Win32Files files;
  Win32RecordFiles record_files;
  Win32Clock clock;
  Win32SystemMessages system_messages;
  Win32MessageLoop message_loop;
  Win32Shell system_shell;
  UndisturbedShell shell{system_shell, message_loop};
  Win32Icons icons;
  Win32Clipboard clipboard;
  Win32Dialogs dialogs{message_loop};
  InternetConnection internet{message_loop, conversion};
  SoundConnection sound{message_loop};
  Win32Turns turns{message_loop};
  Win32MediaKeys media_keys;
  Win32SleepInhibitor sleep_inhibitor;
  Win32Notifications notifications;
  window::DesktopPorts desktop{media_keys, sleep_inhibitor, notifications, turns};
  window::MainWindow logic{window::Platform{profile,
                                            files,
                                            record_files,
                                            environment,
                                            conversion,
                                            string_order,
                                            icons,
                                            internet.Internet(),
                                            internet.Requests(),
                                            sound.Framework(),
                                            sound.Calls(),
                                            sound.Values(),
                                            dialogs,
                                            shell,
                                            clipboard,
                                            system_messages,
                                            message_loop,
                                            clock,
                                            sound.Monitor(),
                                            desktop,
                                            UsersGuide(environment.ProgramFolder())},
                           [this](app::Form2& form) { ShowNewStation(form); }};
  std::optional<FormWindow> window;
  std::optional<DropTarget> drops;
};

Program::Program() : parts_(std::make_unique<Parts>()) {
  parts_->logic.Load();
  parts_->system_messages.SetLookUp([&logic = parts_->logic](const platform::Text& german) {
    return logic.GetLanguage().GetLangText(german, german);
  });
  app::Form1& form1 = parts_->logic.Controls();
  FormWindow& window =
      parts_->window.emplace(form1.form, form1.inventory, nullptr, parts_->icons, parts_->message_loop);
  window.RememberIn(parts_->files, parts_->MemoryFile());
  parts_->drops.emplace(form1.form, window.Handle(), parts_->message_loop);
  parts_->dialogs.SetMainWindow(window.Handle());
  parts_->turns.SetMainWindow(window.Handle());
  parts_->notifications.SetMainWindow(window.Handle());
  window.ReportMediaKeys(
      [&keys = parts_->media_keys](int key, KeyboardIn keyboard) { return keys.Press(key, keyboard); });
}

Program::~Program() = default;

void Program::Run(const platform::Text& argument) {
  parts_->drops->Open(argument);
  RunWindow(*parts_->window, parts_->logic.Controls().form, parts_->message_loop);
}

void Program::Serve(platform::StartRequests& requests) {
  ServeStartRequests(
      requests, parts_->logic.Controls().form, *parts_->window, [this](const std::string& given) {
        parts_->drops->Open(parts_->conversion.MultiByteToWideChar(platform::CodePage::kUtf8, given));
      });
}
