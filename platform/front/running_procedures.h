#pragma once
// The event procedures of the program that run now, one inside the wait of another, and how their waits
// affect the user: the busy pointer, Escape. Not how a procedure is started (a front end's message loop).

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace platform::front {

/// The pointer that shows that the program is busy. May be shown and hidden repeatedly.
class BusyPointer {
 public:
  virtual ~BusyPointer() = default;
  virtual void Show() = 0;
  virtual void Hide() = 0;
};

/// What it means that a procedure lets the window process its messages: that the user waits for it, or that
/// it does its work in the background. A wait that only paints always makes the user wait.
enum class Pumping { kIsWaiting, kIsWork };

/// The pointer is busy while any running procedure has been waiting for `kPatience`. A procedure that rests
/// (a dialog waits for the user inside it) does not wait.
class RunningProcedures final {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kPatience{200};

  /// The pointer outlives the object. `now` is asked for the time.
  explicit RunningProcedures(BusyPointer& pointer, std::function<Clock::time_point()> now = &Clock::now);

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
  struct Procedure {
    Pumping pumping;
    std::optional<Clock::time_point> waiting_since;
    bool escape_pressed = false;
  };
  void ShowPointer(Clock::time_point now);

  BusyPointer& pointer_;
  const std::function<Clock::time_point()> now_;
  std::vector<Procedure> running_;
};

}  // namespace platform::front
