#pragma once
// Test doubles of the small ports: what a test sets is what the program sees, what the program did is kept.
// Not the media framework or the internet; those have their own scripted doubles.

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ports/clipboard.h"
#include "ports/clock.h"
#include "ports/dialogs.h"
#include "ports/environment.h"
#include "ports/icons.h"
#include "ports/message_loop.h"
#include "ports/playback_monitor.h"
#include "ports/shell.h"
#include "ports/system_messages.h"

namespace test_support {

using platform::Text;

/// Does not advance unless the test moves it.
class FakeClock : public platform::Clock {
 public:
  double SecondsSinceMidnight() override { return seconds_since_midnight; }
  std::int64_t WholeSeconds() override { return whole_seconds; }
  platform::DateTime LocalTime() override { return local_time; }

  double seconds_since_midnight = 43200.0;
  std::int64_t whole_seconds = 1000;
  platform::DateTime local_time{2026, 11, 15, 23, 35, 36};
};

/// Runs `on_pump` whenever messages are processed, so that a test can act in the middle of a wait. It may
/// replace itself.
class FakeMessageLoop : public platform::MessageLoop {
 public:
  void ProcessPendingMessages() override {
    ++pumps;
    if (const auto action = on_pump) action();
  }
  void ProcessPaintMessages() override {
    ++paints;
    if (const auto action = on_paint) action();
  }
  [[nodiscard]] bool InputEndsWait() const override { return input_ends_wait; }
  void Sleep(std::uint32_t milliseconds) override {
    slept += milliseconds;
    if (const auto action = on_sleep) action(milliseconds);
  }
  std::int16_t GetAsyncKeyState(std::int32_t virtual_key) override { return keys[virtual_key]; }

  int pumps = 0;
  int paints = 0;
  bool input_ends_wait = false;
  std::uint64_t slept = 0;
  std::function<void()> on_pump;
  std::function<void()> on_paint;
  std::function<void(std::uint32_t)> on_sleep;
  std::map<std::int32_t, std::int16_t> keys;
};

/// Answers boxes from `answers` (then with OK) and file dialogs with `chosen_file` (empty: cancelled).
class FakeDialogs : public platform::Dialogs {
 public:
  struct Box {
    Text text;
    Text caption;
    std::uint32_t style;
    friend bool operator==(const Box&, const Box&) = default;
  };

  platform::MessageBoxAnswer MessageBoxW(const Text& text, const Text& caption,
                                         std::uint32_t style) override {
    boxes.push_back({text, caption, style});
    if (on_box) on_box();
    if (answers.empty()) return platform::MessageBoxAnswer::kOk;
    const auto answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  }
  bool GetOpenFileNameW(platform::OpenFileName& dialog) override { return Choose(dialog); }
  bool GetSaveFileNameW(platform::OpenFileName& dialog) override { return Choose(dialog); }

  std::vector<Box> boxes;
  std::vector<platform::MessageBoxAnswer> answers;
  std::function<void()> on_box;
  Text chosen_file;
  std::vector<platform::OpenFileName> file_dialogs;

 private:
  bool Choose(platform::OpenFileName& dialog) {
    file_dialogs.push_back(dialog);
    if (chosen_file.empty() || chosen_file.size() >= dialog.file.size()) return false;
    dialog.file.replace(0, chosen_file.size(), chosen_file);
    dialog.file[chosen_file.size()] = u'\0';
    return true;
  }
};

class FakeShell : public platform::Shell {
 public:
  struct Launch {
    std::uint32_t owner;
    Text verb, file, parameters, folder;
    std::int32_t show;
  };
  bool ShellExecuteW(std::uint32_t owner, const Text& verb, const Text& file, const Text& parameters,
                     const Text& folder, std::int32_t show) override {
    launches.push_back({owner, verb, file, parameters, folder, show});
    return starts;
  }
  std::vector<Launch> launches;
  bool starts = true;
};

class FakeClipboard : public platform::Clipboard {
 public:
  Text GetText() override { return text; }
  void SetText(const Text& new_text) override { text = new_text; }
  Text text;
};

class FakeSystemMessages : public platform::SystemMessages {
 public:
  Text FormatMessageA(std::int32_t code) override { return messages[code]; }
  std::map<std::int32_t, Text> messages;
};

/// Returns what the test has put into `status`.
class FakePlaybackMonitor : public platform::PlaybackMonitor {
 public:
  [[nodiscard]] platform::PlaybackStatus Status() const override { return status; }
  platform::PlaybackStatus status;
};

class FakeEnvironment : public platform::Environment {
 public:
  Text GetEnvironmentVariableW(const Text& name) override { return variables[name]; }
  Text ProgramFolder() override { return program_folder; }
  Text MusicFolder() override { return music_folder; }
  Text StateFile(const Text&, const Text& extension) override { return state_file + extension; }
  std::uint32_t GetCurrentProcessId() override { return process_id; }

  std::map<Text, Text> variables;
  Text program_folder = u"C:\\Programme\\Funkhaus";
  Text music_folder = u"C:\\Musik";
  Text state_file = u"C:\\Zustand\\0815";
  std::uint32_t process_id = 4711;
};

/// Every file that `loadable` names loads; counts what was created and released.
class FakeIcons : public platform::Icons {
 public:
  platform::ImageListHandle ImageList_Create(int width, int height, std::uint32_t flags, int initial,
                                             int grow) override {
    created.push_back({width, height, static_cast<int>(flags), initial, grow});
    return platform::ImageListHandle{7};
  }
  int ImageList_AddIcon(platform::ImageListHandle, platform::IconHandle) override {
    return refuses_icons ? -1 : images++;
  }
  bool ImageList_Destroy(platform::ImageListHandle) override {
    ++destroyed_lists;
    return true;
  }
  platform::IconHandle LoadImageW(const Text& path, int width, int height) override {
    loads.push_back({path, {width, height}});
    if (!loadable(path)) return platform::IconHandle::kNone;
    ++live_icons;
    return platform::IconHandle{1};
  }
  bool DestroyIcon(platform::IconHandle) override {
    --live_icons;
    return true;
  }
  platform::LoadedPicture LoadPicture(const Text& path) override {
    if (!loadable(path)) return {};
    ++live_pictures;
    picture_paths[++last_picture] = path;
    return {platform::PictureHandle{last_picture}, picture_width, picture_height};
  }
  void DestroyPicture(platform::PictureHandle) override { --live_pictures; }

  std::function<bool(const Text&)> loadable = [](const Text&) { return true; };
  std::vector<std::vector<int>> created;
  std::vector<std::pair<Text, std::pair<int, int>>> loads;
  int images = 0;
  bool refuses_icons = false;  ///< into an image list
  int live_icons = 0;
  int live_pictures = 0;
  int destroyed_lists = 0;
  std::uint32_t last_picture = 0;
  std::map<std::uint32_t, Text> picture_paths;  ///< by the picture's handle
  int picture_width = 3000;
  int picture_height = 1500;
};

}  // namespace test_support
