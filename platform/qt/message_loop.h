#pragma once
// The pump of the user-interface thread on Qt's event loop, the event procedures that it runs, and the state
// of the keys. Not for timers; those are bound in platform/qt/timer_binding.h.

#include <QObject>
#include <QPointer>
#include <deque>
#include <functional>
#include <map>

#include "platform/qt/busy_cursor.h"
#include "ports/message_loop.h"

class QKeyEvent;

namespace platform::qt {

/// What input does to a wait that is in progress when it comes.
enum class OnWait { kKeepsWaiting, kEndsWait };

/// Lives as long as the application object, whose events it watches for keys. A press is remembered until it
/// is queried or the program becomes idle: what was pressed before a long run began was not meant for it.
///
/// Widgets never run an event procedure of the program themselves. They queue it, and it runs from an event
/// loop, one after the other in the order of the input. So only event loops of the toolkit are on the stack
/// below it, and a procedure that waits cannot destroy a widget inside a call of the toolkit. While only
/// painting is allowed the widgets keep taking input, which stays queued.
class QtMessageLoop final : public QObject, public MessageLoop {
 public:
  /// Whether a procedure that takes long makes the user wait, or does what the user asked for, such as a
  /// recording. In a program of the latter kind Escape does not end a wait.
  enum class LongProcedures { kAreWaits, kAreWork };
  explicit QtMessageLoop(LongProcedures long_procedures = LongProcedures::kAreWaits);
  ~QtMessageLoop() override;

  void ProcessPendingMessages() override;
  void ProcessPaintMessages() override;
  [[nodiscard]] bool InputEndsWait() const override;
  void Sleep(std::uint32_t milliseconds) override;
  std::int16_t GetAsyncKeyState(std::int32_t virtual_key) override;

  /// Runs the procedure from the event loop, never inside this call. It is dropped when `context` is
  /// destroyed.
  void HandOver(QObject& context, std::function<void()> procedure, OnWait on_wait = OnWait::kKeepsWaiting);

  /// For an event that comes from the event loop itself, a timer's: runs the procedure at once, or not at all
  /// while only painting is allowed.
  void Tick(const std::function<void()>& procedure);

  /// True while only painting is allowed.
  [[nodiscard]] bool PaintingOnly() const { return painting_only_; }

  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Key {
    bool down = false;
    bool pressed_since_asked = false;
  };
  struct HandedOver {
    QPointer<QObject> context;
    std::function<void()> procedure;
    OnWait on_wait;
  };
  void AskForTurn();
  void RunNext();
  void Press(const QKeyEvent& press);

  const LongProcedures long_procedures_;
  std::map<int, Key> keys_;  // by Qt::Key
  std::deque<HandedOver> handed_over_;
  int turns_held_ = 0;
  bool painting_only_ = false;
  BusyCursor cursor_;
  front::RunningProcedures running_{cursor_};
};

}  // namespace platform::qt
