#pragma once
// The first step of every start: one copy of the program runs per settings folder; a later start brings its
// window to the front and has it open what the later start was given. The one that runs removes the temporary
// files of an earlier one that was killed. Not the program itself (programs/linux/program.h).

#include <memory>
#include <optional>
#include <string>

namespace platform {
class StartRequests;
}

/// Created before the program, and kept until it is gone: as long as this exists, the program's files belong
/// to this copy alone.
class Entrance {
 public:
  /// `argument` is what this start was given to open, in a form that the running copy understands as well
  /// (platform/posix/start_argument.h).
  explicit Entrance(const std::string& argument = {});
  ~Entrance();
  Entrance(const Entrance&) = delete;
  Entrance& operator=(const Entrance&) = delete;

  /// The exit code of a start that does not run: 0 when the running copy came to the front, 1 (and a line on
  /// the error output) when it did not answer. Nothing for the one that runs.
  [[nodiscard]] std::optional<int> ExitCode() const;

  /// What later starts ask of this one; null when nobody can ask.
  [[nodiscard]] platform::StartRequests* Requests() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};
