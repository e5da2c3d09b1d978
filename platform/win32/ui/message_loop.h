#pragma once
// The pump of the user-interface thread on the system's message queue, the event procedures that it runs, and
// the state of the keys. Not for timers of the program; those are bound in timer_binding.h.

#include <deque>
#include <functional>
#include <map>

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/busy_pointer.h"
#include "platform/win32/ui/lifetime.h"
#include "ports/message_loop.h"

struct tagMSG;

namespace platform::win32 {

/// A key was pressed, without Alt. Without a focus in the thread the system reports keys to the active
/// window, as if they came with Alt, but says that it is not down.
[[nodiscard]] bool IsKeyPress(const tagMSG& message);

/// What input does to a wait that is in progress when it comes.
enum class OnWait { kKeepsWaiting, kEndsWait };

/// One per thread. Controls never run an event procedure of the program themselves. They queue it, and a
/// message that is posted for each brings it its turn, in the order of the input: so it runs when messages
/// are taken from the queue, never inside a call of the system that the program's own code caused. While only
/// painting is allowed the controls keep taking input, which stays queued.
class Win32MessageLoop final : public MessageLoop {
 public:
  /// Whether a procedure that takes long makes the user wait, or does what the user asked for, such as a
  /// recording. In a program of the latter kind Escape does not end a wait.
  enum class LongProcedures { kAreWaits, kAreWork };
  explicit Win32MessageLoop(LongProcedures long_procedures = LongProcedures::kAreWaits);
  ~Win32MessageLoop() override;
  Win32MessageLoop(const Win32MessageLoop&) = delete;
  Win32MessageLoop& operator=(const Win32MessageLoop&) = delete;

  void ProcessPendingMessages() override;
  void ProcessPaintMessages() override;
  [[nodiscard]] bool InputEndsWait() const override;
  void Sleep(std::uint32_t milliseconds) override;
  std::int16_t GetAsyncKeyState(std::int32_t virtual_key) override;

  /// Queues the procedure; it is dropped when `context` is gone before its turn.
  void HandOver(const Lifetime& context, std::function<void()> procedure,
                OnWait on_wait = OnWait::kKeepsWaiting);
  /// For a timer's tick: runs the procedure at once, or not at all while only painting is allowed.
  void Tick(const std::function<void()>& procedure);
  [[nodiscard]] bool PaintingOnly() const { return painting_only_; }

  /// Makes a call of the system's during which it may handle this thread's messages itself, as for a dialog
  /// of its own. They come to no more than painting, as in ProcessPaintMessages.
  void CallWithoutProcedures(const std::function<void()>& call);

  /// Waits for messages and handles them while `wanted` says so, or until the program is told to leave all
  /// its loops (LeaveAll).
  void RunWhile(const std::function<bool()>& wanted);
  /// Ends every loop, those of the system's dialogs and menus too.
  static void LeaveAll();
  /// From now on the program waits for the user, in a dialog or menu of the system.
  void Rest();

  /// Sees the key messages to a top-level window and its controls first; true: the message is done.
  using KeyFilter = std::function<bool(const tagMSG&)>;
  void SetKeyFilter(HWND window, KeyFilter filter);
  void RemoveKeyFilter(HWND window) { filters_.erase(window); }

  /// For the loop's own window: the turn of what was queued first.
  void TakeTurn();

 private:
  struct HandedOver {
    Lifetime::Watch context;
    std::function<void()> procedure;
    OnWait on_wait;
  };
  void AskForTurn() const;
  void HandlePending();
  void Handle(const tagMSG& message);
  void WatchKeys(const tagMSG& message);

  const LongProcedures long_procedures_;
  HWND window_ = nullptr;
  std::map<HWND, KeyFilter> filters_;
  std::deque<HandedOver> handed_over_;
  int turns_held_ = 0;
  bool painting_only_ = false;
  bool escape_down_ = false;
  bool escape_pressed_ = false;
  BusyPointer pointer_;
  front::RunningProcedures running_{pointer_};
};

}  // namespace platform::win32
