#include "programs/linux/program.h"

#include <QApplication>
#include <QFile>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "app/forms/form2.h"
#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/curl/library_ahead.h"
#include "platform/desktop/mpris_player.h"
#include "platform/desktop/notifications.h"
#include "platform/desktop/sleep_inhibitor.h"
#include "platform/gstreamer/gst_media.h"
#include "platform/icu/string_order.h"
#include "platform/icu/text_conversion.h"
#include "platform/ini/private_profile.h"
#include "platform/posix/clock.h"
#include "platform/posix/environment.h"
#include "platform/posix/file_address.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "platform/posix/program_data_paths.h"
#include "platform/posix/record_files.h"
#include "platform/posix/shell.h"
#include "platform/posix/system_messages.h"
#include "platform/posix/users_guide.h"
#include "platform/qt/clipboard.h"
#include "platform/qt/close_requests.h"
#include "platform/qt/desktop_colors.h"
#include "platform/qt/dialogs.h"
#include "platform/qt/drop_binding.h"
#include "platform/qt/icons.h"
#include "platform/qt/language.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/new_station_window.h"
#include "platform/qt/player_window.h"
#include "platform/qt/raise_requests.h"
#include "platform/qt/toolkit_ahead.h"
#include "platform/qt/turns.h"
#include "platform/values/portable_property_values.h"
#include "window/main_window.h"

namespace {

/// Without a display the toolkit reports that and would then abort the process.
void LeaveOnFatalMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
  std::fprintf(stderr, "%s\n", qPrintable(message));
  if (type == QtFatalMsg) std::_Exit(EXIT_FAILURE);
}

std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv) {
  // Not a display name: the toolkit would append it to the title of every window.
  QApplication::setApplicationName(QStringLiteral("Funkhausplayer"));
  QApplication::setDesktopFileName(QStringLiteral("funkhausplayer"));
  // The window's pictures are small bars, many times a second. Through shared memory each would cost an
  // answer from the X server and two wake-ups; sent directly they cost less. Does nothing on other displays.
  const bool chosen = qEnvironmentVariableIsSet("QT_XCB_NO_MITSHM");
  if (!chosen) qputenv("QT_XCB_NO_MITSHM", "1");
  const QtMessageHandler usual = qInstallMessageHandler(LeaveOnFatalMessage);
  auto application = std::make_unique<QApplication>(argc, argv);
  qInstallMessageHandler(usual);
  // The toolkit has read it; the programs that this one starts choose for themselves.
  if (!chosen) qunsetenv("QT_XCB_NO_MITSHM");
  return application;
}

}  // namespace

/// Declared in the order of construction; the window is destroyed before the adapters that it uses.
struct Program::Parts {
  Parts(int& argc, char** argv) : application(MakeApplication(argc, argv)) {}

  [[nodiscard]] platform::qt::Language ToolkitLanguage() const {
    return logic.GetLanguage().Translates() ? platform::qt::Language::kEnglish
                                            : platform::qt::Language::kGerman;
  }

  void ShowNewStation(app::Form2& form) {
    platform::qt::NewStationWindow(form, icons, message_loop, window.get()).RunModal();
  }

  /// What the first station would wait for otherwise.
  void LoadAhead() {
    http_ahead.emplace();
    media.LoadAhead();
  }

  /// In the user's folder for state, one for each settings folder.
  [[nodiscard]] QString MemoryFile() {
    const app::Settings& settings = logic.GetSettings();
    const platform::Text station_file = settings.SettingsFolder + settings.StationFileName;
    const std::string file = plain_paths.ToNative(environment.StateFile(station_file, u".window"));
    return QFile::decodeName(QByteArray::fromStdString(file));
  }

  [[nodiscard]] platform::Text Guide() {
    const std::string guide = platform::posix::UsersGuide(plain_paths.ToNative(environment.ProgramFolder()));
    return guide.empty() ? platform::Text() : platform::posix::FileAddress(guide);
  }

  std::unique_ptr<QApplication> application;
  platform::qt::ToolkitAhead toolkit_ahead;
  platform::qt::DesktopColors desktop_colors;
  platform::posix::PosixNativePaths plain_paths;
  platform::posix::PosixEnvironment environment{plain_paths};
  platform::icu::IcuTextConversion conversion;
  platform::posix::ProgramDataPaths paths{plain_paths,
                                          conversion,
                                          {platform::posix::UsersDataFolder(), environment.ProgramFolder()},
                                          {u"Languages", u"RadioIco", u"RadioJPG"}};
  platform::icu::IcuStringOrder string_order;
  platform::posix::PosixProfileFiles profile_files;
  platform::ini::IniPrivateProfile profile{paths, profile_files, conversion};
  platform::posix::PosixFiles files{paths};
  platform::posix::PosixRecordFiles record_files{paths};
  platform::posix::PosixClock clock;
  platform::posix::PosixShell shell{paths};
  platform::posix::PosixSystemMessages system_messages;
  platform::values::PortablePropertyValues property_values;
  platform::qt::QtMessageLoop message_loop;
  platform::qt::QtIcons icons{paths};
  platform::qt::QtClipboard clipboard;
  platform::qt::QtDialogs dialogs{paths};
  platform::curl::CurlInternet internet{message_loop, conversion};
  platform::curl::CurlXmlHttpRequests requests{conversion};
  std::optional<platform::curl::LibraryAhead> http_ahead;
  platform::gstreamer::GstMedia media{message_loop, paths};
  platform::qt::QtTurns turns{message_loop};
  platform::desktop::MprisPlayer media_controls{platform::qt::DesktopColors::SessionBus(), paths};
  platform::desktop::BusSleepInhibitor sleep_inhibitor{platform::qt::DesktopColors::SessionBus()};
  platform::desktop::BusNotifications notifications{platform::qt::DesktopColors::SessionBus()};
  window::DesktopPorts desktop{media_controls, sleep_inhibitor, notifications, turns};
  window::MainWindow logic{
      window::Platform{profile, files,    record_files, environment,     conversion,   string_order,
                       icons,   internet, requests,     media,           media,        property_values,
                       dialogs, shell,    clipboard,    system_messages, message_loop, clock,
                       media,   desktop,  Guide()},
      [this](app::Form2& form) { ShowNewStation(form); }};
  std::unique_ptr<platform::qt::ToolkitTexts> toolkit_texts;
  std::unique_ptr<platform::qt::PlayerWindow> window;
};

Program::Program(int& argc, char** argv) : parts_(std::make_unique<Parts>(argc, argv)) {
  parts_->logic.Load();
  const auto translated = [&logic = parts_->logic](const platform::Text& german) {
    return logic.GetLanguage().GetLangText(german, german);
  };
  parts_->dialogs.SetLookUp(translated);
  parts_->system_messages.SetLookUp(translated);
  parts_->toolkit_texts = std::make_unique<platform::qt::ToolkitTexts>(parts_->ToolkitLanguage());
  parts_->window = std::make_unique<platform::qt::PlayerWindow>(parts_->logic.Controls(), parts_->icons,
                                                                parts_->message_loop);
  parts_->window->RememberIn(parts_->MemoryFile());
  parts_->dialogs.SetMainWindow(parts_->window.get());
  parts_->turns.SetMainWindow(parts_->window.get());
}

Program::~Program() = default;

int Program::Run(platform::StartRequests* requests, const std::string& argument) {
  controls::Form& form = parts_->logic.Controls().form;
  const platform::qt::CloseRequests close_requests(form, parts_->message_loop);
  platform::qt::DropBinding drops(form, *parts_->window, parts_->message_loop, parts_->plain_paths);
  const auto open = [&drops](const std::string& given) { drops.Open(given); };
  std::optional<platform::qt::RaiseRequests> raise_requests;
  if (requests != nullptr) raise_requests.emplace(*requests, form, *parts_->window, open);
  open(argument);
  const auto appeared = parts_->window->Appeared.Subscribe([this] { parts_->LoadAhead(); });
  return parts_->window->Run();
}

window::MainWindow& Program::Logic() { return parts_->logic; }

platform::qt::PlayerWindow& Program::Window() { return *parts_->window; }
