#pragma once
// The program on Linux: creates the platform's adapters and the main window over them, and runs it.
// Not for the program's behaviour; that is the main window's.

#include <memory>
#include <string>

namespace window {
class MainWindow;
}
namespace platform {
class StartRequests;
}
namespace platform::qt {
class PlayerWindow;
}

/// One per process. Order: construct, Run.
class Program {
 public:
  /// `argc` and `argv` are for the toolkit; the program's own arguments are read before. They outlive the
  /// object.
  Program(int& argc, char** argv);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Shows the window and returns the exit code when it has been closed. Meanwhile `requests` of later starts
  /// bring the window to the front; null when nobody can ask. `argument`, and what later starts are given, is
  /// opened as if it had been dropped on the window (platform/qt/drop_binding.h).
  int Run(platform::StartRequests* requests = nullptr, const std::string& argument = {});

  [[nodiscard]] window::MainWindow& Logic();
  /// The window on the screen; created by the constructor, shown by Run.
  [[nodiscard]] platform::qt::PlayerWindow& Window();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};
