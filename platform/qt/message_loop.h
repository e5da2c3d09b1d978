#pragma once
// The pump of the user-interface thread on Qt's event loop, and the state of the keys.
// Not for timers; those are bound in platform/qt/timer_binding.h.

#include <QObject>
#include <map>

#include "controls/event.h"
#include "platform/message_loop.h"

namespace platform::qt {

/// Lives as long as the application object, whose events it watches for keys. A press is remembered until it
/// is asked for or the program comes to rest: what was pressed before a long run began was not meant for it.
class QtMessageLoop final : public QObject, public MessageLoop {
 public:
  QtMessageLoop();
  ~QtMessageLoop() override;

  void ProcessPendingMessages() override;
  void ProcessPaintMessages() override;
  void Sleep(std::uint32_t milliseconds) override;
  std::int16_t GetAsyncKeyState(std::int32_t virtual_key) override;

  /// True while only painting is allowed: whoever receives a tick then drops it.
  [[nodiscard]] bool PaintingOnly() const { return painting_only_; }

  /// Raised in every round of a wait that only paints, for what touches no state of the program.
  controls::Event<> Painted;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Key {
    bool down = false;
    bool pressed_since_asked = false;
  };
  std::map<int, Key> keys_;  // by Qt::Key
  bool painting_only_ = false;
};

}  // namespace platform::qt
