#include "platform/qt/message_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QThread>
#include <algorithm>
#include <utility>

namespace platform::qt {
namespace {

constexpr std::int16_t kDown = static_cast<std::int16_t>(0x8000);
constexpr std::int16_t kPressedSince = 1;

int QtKey(std::int32_t virtual_key) { return virtual_key == kVkEscape ? int{Qt::Key_Escape} : 0; }

/// The turn of the procedure that was queued first.
QEvent::Type TurnType() {
  static const int type = QEvent::registerEventType();
  return static_cast<QEvent::Type>(type);
}

}  // namespace

QtMessageLoop::QtMessageLoop(LongProcedures long_procedures) : long_procedures_(long_procedures) {
  keys_[Qt::Key_Escape] = {};
  QCoreApplication::instance()->installEventFilter(this);
  if (QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance()) {
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] {
      for (auto& [code, key] : keys_) key.pressed_since_asked = false;
      running_.Rests();
    });
  }
}

QtMessageLoop::~QtMessageLoop() = default;

void QtMessageLoop::ProcessPendingMessages() {
  running_.Pumps();
  // Processing messages inside a wait that only paints is allowed in full: its caller may be re-entered.
  const bool outer = std::exchange(painting_only_, false);
  for (; turns_held_ > 0; --turns_held_) AskForTurn();
  QCoreApplication::processEvents(QEventLoop::AllEvents);
  painting_only_ = outer;
}

void QtMessageLoop::ProcessPaintMessages() {
  running_.Waits();
  const bool outer = std::exchange(painting_only_, true);
  QCoreApplication::processEvents(QEventLoop::AllEvents);
  painting_only_ = outer;
  if (painting_only_) return;
  for (; turns_held_ > 0; --turns_held_) AskForTurn();
}

bool QtMessageLoop::InputEndsWait() const {
  if (long_procedures_ == LongProcedures::kAreWaits && running_.EscapePressedInside()) return true;
  return std::any_of(handed_over_.begin(), handed_over_.end(), [](const HandedOver& next) {
    return next.context && next.on_wait == OnWait::kEndsWait;
  });
}

void QtMessageLoop::HandOver(QObject& context, std::function<void()> procedure, OnWait on_wait) {
  handed_over_.push_back({&context, std::move(procedure), on_wait});
  AskForTurn();
}

void QtMessageLoop::AskForTurn() { QCoreApplication::postEvent(this, new QEvent(TurnType())); }

void QtMessageLoop::RunNext() {
  if (handed_over_.empty()) return;
  const HandedOver next = std::move(handed_over_.front());
  handed_over_.pop_front();
  if (!next.context) return;
  const front::RunningProcedures::Scope scope(running_, long_procedures_ == LongProcedures::kAreWaits
                                                            ? front::Pumping::kIsWaiting
                                                            : front::Pumping::kIsWork);
  next.procedure();
}

void QtMessageLoop::Tick(const std::function<void()>& procedure) {
  if (painting_only_) return;
  const front::RunningProcedures::Scope scope(running_, front::Pumping::kIsWork);
  procedure();
}

void QtMessageLoop::Sleep(std::uint32_t milliseconds) { QThread::msleep(milliseconds); }

std::int16_t QtMessageLoop::GetAsyncKeyState(std::int32_t virtual_key) {
  const auto key = keys_.find(QtKey(virtual_key));
  if (key == keys_.end()) return 0;
  const bool pressed = std::exchange(key->second.pressed_since_asked, false);
  return static_cast<std::int16_t>((key->second.down ? kDown : 0) | (pressed ? kPressedSince : 0));
}

bool QtMessageLoop::event(QEvent* event) {
  if (event->type() != TurnType()) return QObject::event(event);
  if (painting_only_) {
    ++turns_held_;
  } else {
    RunNext();
  }
  return true;
}

void QtMessageLoop::Press(const QKeyEvent& press) {
  const auto key = keys_.find(press.key());
  if (key == keys_.end()) return;
  key->second = {true, true};
  if (!press.isAutoRepeat()) running_.EscapePressed();
}

bool QtMessageLoop::eventFilter(QObject* watched, QEvent* event) {
  // A slider or an arrow that is held down repeats through a timer of its widget, which fires again.
  if (painting_only_ && event->type() == QEvent::Timer && watched->isWidgetType()) return true;
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
      Press(*static_cast<QKeyEvent*>(event));
      break;
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
