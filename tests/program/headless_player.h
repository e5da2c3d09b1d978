#pragma once
// The main window without widgets over the real system: files, network, sound and clock; only its boxes, file
// dialogs and clipboard are doubles. Not the program's own composition, which has widgets too.

#include <QGuiApplication>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/gstreamer/gst_media.h"
#include "platform/icu/string_order.h"
#include "platform/icu/text_conversion.h"
#include "platform/ini/private_profile.h"
#include "platform/posix/clock.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "platform/posix/record_files.h"
#include "platform/posix/shell.h"
#include "platform/posix/system_messages.h"
#include "platform/qt/icons.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/timer_binding.h"
#include "platform/values/portable_property_values.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_folder.h"
#include "window/main_window.h"

namespace test_support {

/// One per process, because it holds the toolkit's application. Sound goes where PULSE_SERVER says, so set
/// that before. Order: construct, Start, operate the controls, Close; then Start again, or destroy.
class HeadlessPlayer {
 public:
  /// Settings lie in `folder`/config, the program's own folder is `folder`/program.
  explicit HeadlessPlayer(const TempFolder& folder);

  void Start();
  /// The user's close button; the window and its sound are gone afterwards.
  void Close();
  [[nodiscard]] bool Running() const { return window_ != nullptr; }
  app::Form1& Form() { return window_->Controls(); }
  [[nodiscard]] const app::WindowState& State() const { return window_->State(); }

  /// Lets the window run until `condition` holds; false when `limit` passes first.
  bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit);

  FakeDialogs dialogs;
  FakeClipboard clipboard;
  FakeDesktop desktop;
  /// What the user does in the new-station dialog, which has no widgets here.
  std::function<void(app::Form2&)> in_new_station_dialog;

 private:
  std::string name_ = "funkhausplayer";
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  int count_ = 1;
  std::unique_ptr<QGuiApplication> application_;
  platform::posix::PosixNativePaths paths_;
  FakeEnvironment environment_;
  platform::icu::IcuTextConversion conversion_;
  platform::icu::IcuStringOrder string_order_;
  platform::posix::PosixProfileFiles profile_files_;
  platform::ini::IniPrivateProfile profile_{paths_, profile_files_, conversion_};
  platform::posix::PosixFiles files_{paths_};
  platform::posix::PosixRecordFiles record_files_{paths_};
  platform::posix::PosixClock clock_;
  platform::posix::PosixShell shell_{paths_};
  platform::posix::PosixSystemMessages system_messages_;
  platform::values::PortablePropertyValues property_values_;
  platform::qt::QtMessageLoop message_loop_;
  platform::qt::QtIcons icons_{paths_};
  platform::curl::CurlInternet internet_{message_loop_, conversion_};
  platform::curl::CurlXmlHttpRequests requests_{conversion_};
  platform::gstreamer::GstMedia media_{message_loop_, paths_};
  std::unique_ptr<window::MainWindow> window_;
  std::array<std::unique_ptr<platform::qt::TimerBinding>, 4> timers_;
};

}  // namespace test_support
