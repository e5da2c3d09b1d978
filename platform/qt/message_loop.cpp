#include "platform/qt/message_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QThread>
#include <utility>

namespace platform::qt {
namespace {

constexpr std::int16_t kDown = static_cast<std::int16_t>(0x8000);
constexpr std::int16_t kPressedSince = 1;

int QtKey(std::int32_t virtual_key) { return virtual_key == kVkEscape ? int{Qt::Key_Escape} : 0; }

}  // namespace

QtMessageLoop::QtMessageLoop() {
  keys_[Qt::Key_Escape] = {};
  QCoreApplication::instance()->installEventFilter(this);
  if (QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance()) {
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] {
      for (auto& [code, key] : keys_) key.pressed_since_asked = false;
    });
  }
}

QtMessageLoop::~QtMessageLoop() = default;

void QtMessageLoop::ProcessPendingMessages() {
  // A pump inside a wait that only paints is a pump of its own: whoever asks for it may be entered.
  const bool outer = std::exchange(painting_only_, false);
  QCoreApplication::processEvents(QEventLoop::AllEvents);
  painting_only_ = outer;
}

void QtMessageLoop::ProcessPaintMessages() {
  const bool outer = std::exchange(painting_only_, true);
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
  Painted.Raise();
  painting_only_ = outer;
  // Input that was left in the queue does not wake the loop by itself: without this it would wait there
  // until the display sends something else.
  if (QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance()) dispatcher->wakeUp();
}

void QtMessageLoop::Sleep(std::uint32_t milliseconds) { QThread::msleep(milliseconds); }

std::int16_t QtMessageLoop::GetAsyncKeyState(std::int32_t virtual_key) {
  const auto key = keys_.find(QtKey(virtual_key));
  if (key == keys_.end()) return 0;
  const bool pressed = std::exchange(key->second.pressed_since_asked, false);
  return static_cast<std::int16_t>((key->second.down ? kDown : 0) | (pressed ? kPressedSince : 0));
}

bool QtMessageLoop::eventFilter(QObject* watched, QEvent* event) {
  // A slider or an arrow that is held down repeats itself by a timer of its widget, which comes again.
  if (painting_only_ && event->type() == QEvent::Timer && watched->isWidgetType()) return true;
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride: {
      const auto key = keys_.find(static_cast<QKeyEvent*>(event)->key());
      if (key != keys_.end()) key->second = {true, true};
      break;
    }
    case QEvent::KeyRelease: {
      const auto* release = static_cast<QKeyEvent*>(event);
      const auto key = keys_.find(release->key());
      if (key != keys_.end() && !release->isAutoRepeat()) key->second.down = false;
      break;
    }
    case QEvent::ApplicationDeactivate:
      // The release goes to another program then.
      for (auto& [code, key] : keys_) key.down = false;
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace platform::qt
