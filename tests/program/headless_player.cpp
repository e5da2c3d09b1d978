#include "tests/program/headless_player.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace test_support {

namespace {

std::unique_ptr<QGuiApplication> MakeApplication(int& count, char** arguments) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  return std::make_unique<QGuiApplication>(count, arguments);
}

}  // namespace

HeadlessPlayer::HeadlessPlayer(const TempFolder& folder)
    : application_(MakeApplication(count_, arguments_.data())) {
  std::filesystem::create_directories(folder.Path() / "config");
  std::filesystem::create_directories(folder.Path() / "program");
  environment_.variables[u"APPDATA"] = folder.TextPath("config");
  environment_.process_id = static_cast<std::uint32_t>(::getpid());
  environment_.state_file = folder.TextPath("state");
  environment_.program_folder = folder.TextPath("program");
}

void HeadlessPlayer::Start() {
  window_ = std::make_unique<window::MainWindow>(
      window::Platform{profile_,         files_,           record_files_, environment_, conversion_,
                       string_order_,    icons_,           internet_,     requests_,    media_,
                       media_,           property_values_, dialogs,       shell_,       clipboard,
                       system_messages_, message_loop_,    clock_,        media_,       desktop.Ports()},
      [this](app::Form2& form) { in_new_station_dialog(form); });
  window_->Load();
  timers_ = {std::make_unique<platform::qt::TimerBinding>(Form().tmPlay, message_loop_),
             std::make_unique<platform::qt::TimerBinding>(Form().Timer1, message_loop_),
             std::make_unique<platform::qt::TimerBinding>(Form().Timer2, message_loop_),
             std::make_unique<platform::qt::TimerBinding>(Form().tmUnsaved, message_loop_)};
}

void HeadlessPlayer::Close() {
  Form().form.Close();
  timers_ = {};
  window_.reset();
}

bool HeadlessPlayer::WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    message_loop_.ProcessPendingMessages();
    message_loop_.Sleep(5);
  }
  return true;
}

}  // namespace test_support
