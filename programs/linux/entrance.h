#pragma once
// The first step of every start: one copy of the program runs over a settings folder, a later start brings
// its window to the front. Not the program itself (programs/linux/program.h).

#include <memory>
#include <optional>

namespace platform {
class StartRequests;
}

/// Made before the program, and kept until it is gone: its files are this copy's alone as long as this lives.
class Entrance {
 public:
  Entrance();
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
