// The recording tool's entry: in a window where there is a display, otherwise, or when asked to, on the
// terminal.

#include <QApplication>
#include <QScreen>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/icu/text_conversion.h"
#include "platform/posix/clock.h"
#include "platform/posix/environment.h"
#include "platform/posix/file_address.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/record_files.h"
#include "platform/posix/shell.h"
#include "platform/posix/terminal_loop.h"
#include "platform/posix/trial.h"
#include "platform/posix/users_guide.h"
#include "platform/qt/close_requests.h"
#include "platform/qt/desktop_colors.h"
#include "platform/qt/icons.h"
#include "platform/qt/language.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/record_window.h"
#include "recorder/command_line.h"
#include "recorder/music_folder.h"
#include "recorder/record_control.h"
#include "recorder/station_recording.h"
#include "recorder/terminal_report.h"

namespace {

using platform::CodePage;
using platform::Text;

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

/// A recording and all that it needs, on the message loop of a window or of a terminal.
struct Tool {
  explicit Tool(platform::MessageLoop& message_loop) : loop(message_loop) {}

  platform::MessageLoop& loop;
  platform::posix::PosixNativePaths paths;
  platform::icu::IcuTextConversion conversion;
  platform::posix::PosixFiles files{paths};
  platform::posix::PosixRecordFiles record_files{paths};
  platform::posix::PosixEnvironment environment{paths};
  platform::posix::PosixClock clock;
  platform::posix::PosixShell shell{paths};
  platform::curl::CurlInternet internet{loop, conversion};
  platform::curl::CurlXmlHttpRequests requests{conversion};
  recorder::StationRecording recording{
      {{internet, requests, record_files, environment, clock, loop, conversion}, files},
      recorder::RecordingFolder(environment)};
};

bool IsSet(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

bool NamesDisplay() { return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet("QT_QPA_PLATFORM"); }

/// The toolkit ends the process when it cannot reach the display that the environment names, and waits for
/// one that does not answer.
bool CanShowWindows(int argc, char** argv) {
  constexpr std::chrono::seconds kLimit{10};
  const auto open_display = [argc, argv]() mutable {
    const QGuiApplication application(argc, argv);
    return QGuiApplication::primaryScreen() != nullptr;
  };
  return NamesDisplay() && platform::posix::SucceedsInCopy(open_display, kLimit);
}

/// Empty when nothing is entered.
std::string AskForLink() {
  std::fputs("Adresse eines Senders oder einer Playlist: ", stdout);
  std::fflush(stdout);
  std::array<char, 4096> line{};
  if (std::fgets(line.data(), static_cast<int>(line.size()), stdin) == nullptr) return {};
  return recorder::TrimmedLink(line.data());
}

int TellWrongUse() {
  std::fputs(std::string(recorder::Usage()).c_str(), stderr);
  return kWrongUse;
}

int RunOnTerminal(std::string link) {
  if (link.empty()) link = AskForLink();
  if (link.empty()) return TellWrongUse();
  platform::posix::TerminalLoop loop;
  Tool tool(loop);
  loop.EndAsked = [&tool] { tool.recording.Stop(); };
  const Text folder =
      tool.conversion.MultiByteToWideChar(CodePage::kUtf8, tool.paths.ToNative(tool.recording.Folder()));
  const recorder::TerminalReport report(tool.recording, folder, [&tool](const Text& line) {
    std::puts(tool.conversion.WideCharToMultiByte(CodePage::kUtf8, line).c_str());
    std::fflush(stdout);
  });
  tool.recording.Run(tool.conversion.MultiByteToWideChar(CodePage::kUtf8, link));
  return recorder::EndsRecording(tool.recording.GetStatus().fault) ? kFailed : 0;
}

int RunInWindow(int& argc, char** argv, const std::string& link) {
  QApplication::setApplicationName(QStringLiteral("OZRecordFunkhaus"));
  QApplication::setDesktopFileName(QStringLiteral("OZRecordFunkhaus"));
  const QApplication application(argc, argv);
  const platform::qt::DesktopColors desktop_colors;
  const platform::qt::ToolkitTexts toolkit_texts(platform::qt::Language::kGerman);
  platform::qt::QtMessageLoop loop(platform::qt::QtMessageLoop::LongProcedures::kAreWork);
  Tool tool(loop);
  const platform::qt::QtIcons icons(tool.paths);
  app::RecordForm form;
  const std::string guide =
      platform::posix::UsersGuide(tool.paths.ToNative(tool.environment.ProgramFolder()));
  recorder::RecordControl control(
      form, tool.recording, tool.files, tool.shell,
      {.folder = platform::posix::FileAddress(tool.paths.ToNative(tool.recording.Folder())),
       .guide = guide.empty() ? Text() : platform::posix::FileAddress(guide)});
  platform::qt::RecordWindow window(form, icons, loop);
  const platform::qt::CloseRequests close_requests(form.form, loop);
  window.show();
  const auto start = [&] { control.Start(tool.conversion.MultiByteToWideChar(CodePage::kUtf8, link)); };
  if (!link.empty()) loop.HandOver(window, start);
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  using recorder::CommandLine;
  using Wish = CommandLine::Wish;
  // A reader of the terminal's lines that goes away is no reason to end a recording, and a file that must not
  // grow any more is reported as a full disk.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  const auto words =
      std::span<const char* const>(argv, static_cast<std::size_t>(argc)).subspan(argc > 0 ? 1 : 0);
  const CommandLine line = recorder::ReadCommandLine(words);
  if (line.wish == Wish::kWrongUse) return TellWrongUse();
  if (line.wish == Wish::kHelp)
    return std::fputs(std::string(recorder::Usage()).c_str(), stdout) < 0 ? kFailed : 0;
  if (line.form == CommandLine::Form::kTerminal) return RunOnTerminal(line.link);
  if (CanShowWindows(argc, argv)) return RunInWindow(argc, argv, line.link);
  if (NamesDisplay())
    std::fputs("Kein Bildschirm ist erreichbar, darum geht es auf dem Terminal weiter.\n", stderr);
  return RunOnTerminal(line.link);
}
