#pragma once
// The event procedures of the program that run now, one inside the wait of another, and how their waits
// affect the user: the busy pointer, Escape. Not how a procedure is started (message_loop.h).

#include <chrono>
#include <optional>
#include <vector>

#include "platform/win32/ui/busy_pointer.h"

namespace platform::win32 {

/// What it means that a procedure lets the window process its messages: that the user waits for it, or that
/// it does its work in the background. A wait that only paints always makes the user wait.
enum class Pumping { kIsWaiting, kIsWork };

/// The pointer is busy while any running procedure has been waiting for `kPatience`.
class RunningProcedures final {
 public:
  static constexpr std::chrono::milliseconds kPatience{200};

  /// A procedure runs for as long as this lives.
  class Scope final {
   public:
    Scope(RunningProcedures& procedures, Pumping pumping);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    RunningProcedures& procedures_;
  };

  /// The innermost procedure processes messages.
  void Pumps();
  /// It waits while the window only paints.
  void Waits();
  /// The program waits for the user, inside all procedures that run.
  void Rests();

  void EscapePressed();
  /// Whether Escape was pressed since the innermost procedure began.
  [[nodiscard]] bool EscapePressedInside() const;

 private:
  using Clock = std::chrono::steady_clock;
  struct Procedure {
    Pumping pumping;
    std::optional<Clock::time_point> waiting_since;
    bool escape_pressed = false;
  };
  void ShowPointer(Clock::time_point now);

  std::vector<Procedure> running_;
  BusyPointer pointer_;
};

}  // namespace platform::win32
