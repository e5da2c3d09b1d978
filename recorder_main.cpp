// The recording tool's entry: in a window where there is a display, otherwise on the terminal.

#include <QApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/icu/text_conversion.h"
#include "platform/posix/clock.h"
#include "platform/posix/environment.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/record_files.h"
#include "platform/posix/shell.h"
#include "platform/posix/terminal_loop.h"
#include "platform/qt/close_requests.h"
#include "platform/qt/icons.h"
#include "platform/qt/language.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/record_window.h"
#include "recorder/music_folder.h"
#include "recorder/record_control.h"
#include "recorder/station_recording.h"
#include "recorder/terminal_report.h"

namespace {

using platform::CodePage;
using platform::Text;

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

/// A recording and all that it needs, over the message loop of a window or of a terminal.
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
      recorder::MusicFolder(environment, files, paths)};
};

/// All arguments are one link, because whoever starts the tool may have split it at its blanks.
std::string LinkOf(int argc, char** argv) {
  std::string link;
  for (int index = 1; index < argc; ++index) {
    if (index > 1) link += ' ';
    link += argv[index];
  }
  return link;
}

bool IsSet(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

bool HasDisplay() { return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet("QT_QPA_PLATFORM"); }

int RunOnTerminal(const std::string& link) {
  if (link.find_first_not_of(' ') == std::string::npos) {
    std::fputs("Aufruf: OZRecordFunkhaus ADRESSE\nADRESSE ist die eines Senders oder einer Playlist.\n",
               stderr);
    return kWrongUse;
  }
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
  return tool.recording.GetStatus().fault == recorder::Fault::kCannotWrite ? kFailed : 0;
}

int RunInWindow(int& argc, char** argv, const std::string& link) {
  QApplication::setApplicationName(QStringLiteral("OZRecordFunkhaus"));
  QApplication::setDesktopFileName(QStringLiteral("OZRecordFunkhaus"));
  const QApplication application(argc, argv);
  const platform::qt::ToolkitTexts toolkit_texts(platform::qt::Language::kGerman);
  platform::qt::QtMessageLoop loop;
  Tool tool(loop);
  const platform::qt::QtIcons icons(tool.paths);
  recorder::RecordForm form;
  recorder::RecordControl control(form, tool.recording, tool.files, tool.shell,
                                  recorder::FolderAddress(tool.paths, tool.recording.Folder()));
  platform::qt::RecordWindow window(form, icons, loop);
  const platform::qt::CloseRequests close_requests(form.form, loop);
  window.show();
  if (!link.empty()) control.Start(tool.conversion.MultiByteToWideChar(CodePage::kUtf8, link));
  return form.form.IsClosed() ? 0 : QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  // A reader of the terminal's lines that goes away is no reason to end a recording.
  std::signal(SIGPIPE, SIG_IGN);
  const std::string link = LinkOf(argc, argv);
  return HasDisplay() ? RunInWindow(argc, argv, link) : RunOnTerminal(link);
}
