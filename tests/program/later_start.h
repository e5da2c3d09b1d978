#pragma once
// Starts of the program as processes of their own, over the scratch folders of a test.
// Not for looking into their windows.

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <future>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace program_test {

/// What a start inherits: the settings and state folders inside `folder`, and no screen.
class Surroundings {
 public:
  explicit Surroundings(const test_support::TempFolder& folder)
      : folder_(folder.Path()),
        environment_{{"APPDATA", folder.Path()},
                     {"XDG_STATE_HOME", folder.Path() / "state"},
                     {"XDG_DATA_HOME", folder.Path() / "data"},
                     {"QT_QPA_PLATFORM", "offscreen"}} {}

  [[nodiscard]] Surroundings With(const std::string& name, const std::string& value) const {
    Surroundings changed = *this;
    changed.environment_[name] = value;
    return changed;
  }

  /// A start that runs until it is ended.
  [[nodiscard]] test_support::ChildProcess Start() const {
    return test_support::ChildProcess({PLAYER}, environment_);
  }
  /// A start that ends by itself: its exit code and what it wrote on its error output. Throws when it runs.
  /// `words` is what it is given, as a shell reads it; it works in `folder_`.
  [[nodiscard]] test_support::RunResult StartToEnd(const std::string& words = "") const {
    const std::string command = "cd '" + folder_ + "' && exec " PLAYER " 2>&1 " + words;
    return test_support::RunProgram({"/bin/sh", "-c", command}, environment_);
  }
  /// The same without blocking the caller, which may be the running copy.
  [[nodiscard]] std::future<test_support::RunResult> StartToEndMeanwhile(
      const std::string& words = "") const {
    return std::async(std::launch::async, [self = *this, words] { return self.StartToEnd(words); });
  }
  /// Waits until a start in this environment runs and answers others; `running` is how many run over this
  /// state folder then.
  [[nodiscard]] bool ComesUp(int running = 1) const {
    // Otherwise the start that should ask could itself become the one that runs.
    return test_support::WaitUntil([&] { return Running() == running; }, std::chrono::seconds(30)) &&
           StartToEnd().exit_code == 0;
  }

 private:
  [[nodiscard]] int Running() const {
    const std::filesystem::path places = environment_.at("XDG_STATE_HOME") + "/funkhausplayer";
    if (!std::filesystem::exists(places)) return 0;
    int running = 0;
    for (const auto& entry : std::filesystem::directory_iterator(places)) {
      if (entry.path().extension() == ".lock" && IsLocked(entry.path())) ++running;
    }
    return running;
  }
  static bool IsLocked(const std::filesystem::path& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool locked = file >= 0 && ::flock(file, LOCK_SH | LOCK_NB) != 0;
    ::close(file);
    return locked;
  }

  std::string folder_;
  test_support::ChildProcess::Environment environment_;
};

/// Waits until the process has come so far that a signal ends it in an orderly way: its window is shown then.
inline bool HandlesSignals(test_support::ChildProcess& process) {
  constexpr std::uint64_t kSigTerm = 1U << (SIGTERM - 1U);
  return test_support::WaitUntil(
      [&] {
        std::ifstream status("/proc/" + std::to_string(process.Pid()) + "/status");
        for (std::string line; std::getline(status, line);) {
          if (line.starts_with("SigCgt:")) return (std::stoull(line.substr(7), nullptr, 16) & kSigTerm) != 0;
        }
        return false;
      },
      std::chrono::seconds(30));
}

/// Sends SIGTERM; true when the process then ends as after its close button.
inline bool EndsOrderly(test_support::ChildProcess& process) {
  process.Signal(SIGTERM);
  return process.WaitForExit() == 0;
}

}  // namespace program_test
