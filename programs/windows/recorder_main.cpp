// The recording tool's entry: in a window, with the link that the command line names.

#include "platform/win32/base/windows_api.h"

#include <shlwapi.h>

#include "platform/win32/base/wide.h"
#include "platform/win32/system/clock.h"
#include "platform/win32/system/environment.h"
#include "platform/win32/system/files.h"
#include "platform/win32/system/record_files.h"
#include "platform/win32/system/shell.h"
#include "platform/win32/system/users_guide.h"
#include "platform/win32/text/text_conversion.h"
#include "platform/win32/ui/icons.h"
#include "platform/win32/ui/message_loop.h"
#include "platform/win32/ui/program_windows.h"
#include "platform/win32/ui/undisturbed_shell.h"
#include "programs/windows/arguments.h"
#include "programs/windows/internet_connection.h"
#include "programs/windows/system_setup.h"
#include "recorder/command_line.h"
#include "recorder/music_folder.h"
#include "recorder/record_control.h"
#include "recorder/station_recording.h"

namespace {

using namespace platform::win32;

constexpr int kWrongUse = 2;
constexpr const char16_t* kTitle = u"OZRecordFunkhaus";

/// The "file" address of a folder.
platform::Text FolderAddress(const platform::Text& folder) {
  platform::Text address(2048, u'\0');
  DWORD length = static_cast<DWORD>(address.size());
  if (FAILED(::UrlCreateFromPathW(Wide(folder), WideBuffer(address.data()), &length, 0))) return folder;
  address.resize(length);
  return address;
}

void RunInWindow(const std::string& link) {
  Win32MessageLoop loop(Win32MessageLoop::LongProcedures::kAreWork);
  Win32TextConversion conversion;
  Win32Files files;
  Win32RecordFiles record_files;
  Win32Environment environment;
  Win32Clock clock;
  Win32Shell system_shell;
  UndisturbedShell shell(system_shell, loop);
  InternetConnection connection(loop, conversion);
  recorder::StationRecording recording{
      {{connection.Internet(), connection.Requests(), record_files, environment, clock, loop, conversion},
       files},
      recorder::RecordingFolder(environment)};
  const Win32Icons icons;
  app::RecordForm form;
  recorder::RecordControl control(
      form, recording, files, shell,
      {.folder = FolderAddress(recording.Folder()), .guide = UsersGuide(environment.ProgramFolder())});
  FormWindow window(form.form, form.inventory, nullptr, icons, loop);
  const Lifetime lifetime;
  const auto start = [&] { control.Start(conversion.MultiByteToWideChar(platform::CodePage::kUtf8, link)); };
  if (!link.empty()) loop.HandOver(lifetime, start);
  RunWindow(window, form.form, loop);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, wchar_t* /*line*/, int /*show*/) {
  const SystemSetup setup;
  using Wish = recorder::CommandLine::Wish;
  const recorder::CommandLine line = recorder::ReadCommandTail(CommandTail());
  if (line.wish != Wish::kRecord) {
    ShowText(kTitle, std::string(recorder::Usage()));
    return line.wish == Wish::kHelp ? 0 : kWrongUse;
  }
  RunInWindow(line.link);
  return 0;
}
