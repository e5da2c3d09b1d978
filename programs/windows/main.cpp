// The Windows program's entry.

#include "platform/win32/base/windows_api.h"

#include <chrono>

#include "app/settings/station_file_place.h"
#include "platform/ini/private_profile.h"
#include "platform/win32/system/environment.h"
#include "platform/win32/system/files.h"
#include "platform/win32/system/native_paths.h"
#include "platform/win32/system/profile_files.h"
#include "platform/win32/system/single_start.h"
#include "platform/win32/text/text_conversion.h"
#include "programs/windows/arguments.h"
#include "programs/windows/program.h"
#include "programs/windows/system_setup.h"
#include "window/command_line.h"

namespace {

using platform::win32::SingleStart;

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;
/// How long a running copy may take to answer, or to end.
constexpr std::chrono::seconds kLongestWait{5};
constexpr const char16_t* kTitle = u"Funkhausplayer";

/// One copy of the program runs per station file.
platform::Text Place() {
  platform::win32::Win32NativePaths paths;
  platform::win32::Win32TextConversion conversion;
  platform::win32::Win32ProfileFiles profile_files;
  platform::ini::IniPrivateProfile profile(paths, profile_files, conversion);
  platform::win32::Win32Files files;
  platform::win32::Win32Environment environment;
  return app::PlacesOfStationFile(profile, files, environment).station_file;
}

int Run(const std::string& argument) {
  const platform::Text full = FullArgument(argument);
  platform::win32::Win32TextConversion conversion;
  const std::string given = conversion.WideCharToMultiByte(platform::CodePage::kUtf8, full);
  const SingleStart start(Place(), {{}, given}, kLongestWait);
  if (start.Get() == SingleStart::Outcome::kHandedOver) return 0;
  if (start.Get() == SingleStart::Outcome::kUnanswered) {
    ShowText(kTitle, "Funkhausplayer läuft bereits, antwortet aber nicht.");
    return kFailed;
  }
  Program program;
  platform::StartRequests* const requests = start.Requests();
  if (requests != nullptr) requests->Arrived = [&program, requests] { program.Serve(*requests); };
  program.Run(full);
  if (requests != nullptr) requests->Arrived = nullptr;
  return 0;
}

int Obey(const window::CommandLine& line) {
  using Wish = window::CommandLine::Wish;
  const std::string usage(window::Usage());
  switch (line.wish) {
    case Wish::kHelp:
      ShowText(kTitle, usage);
      return 0;
    case Wish::kVersion:
      ShowText(kTitle, "Funkhausplayer " FUNKHAUS_VERSION);
      return 0;
    case Wish::kWrongUse:
      ShowText(kTitle, line.problem + "\n\n" + usage);
      return kWrongUse;
    case Wish::kRun:
      break;
  }
  return Run(line.argument);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, wchar_t* /*line*/, int /*show*/) {
  const SystemSetup setup;
  const std::vector<std::string> arguments = Arguments();
  std::vector<const char*> words;
  for (const std::string& argument : arguments) words.push_back(argument.c_str());
  return Obey(window::ReadCommandLine(words));
}
