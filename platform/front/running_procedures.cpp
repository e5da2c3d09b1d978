#include "platform/front/running_procedures.h"

#include <algorithm>
#include <utility>

namespace platform::front {

RunningProcedures::RunningProcedures(BusyPointer& pointer, std::function<Clock::time_point()> now)
    : pointer_(pointer), now_(std::move(now)) {}

RunningProcedures::Scope::Scope(RunningProcedures& procedures, Pumping pumping) : procedures_(procedures) {
  procedures_.running_.push_back({pumping, std::nullopt, false});
}

RunningProcedures::Scope::~Scope() {
  procedures_.running_.pop_back();
  // The outer procedure may still be waiting; its next processing of messages or painting decides.
  if (procedures_.running_.empty()) procedures_.pointer_.Hide();
}

void RunningProcedures::Pumps() {
  if (running_.empty()) return;
  Procedure& innermost = running_.back();
  if (innermost.pumping == Pumping::kIsWaiting) return Waits();
  innermost.waiting_since.reset();
  ShowPointer(now_());
}

void RunningProcedures::Waits() {
  if (running_.empty()) return;
  const Clock::time_point now = now_();
  Procedure& innermost = running_.back();
  if (!innermost.waiting_since) innermost.waiting_since = now;
  ShowPointer(now);
}

void RunningProcedures::ShowPointer(Clock::time_point now) {
  const bool busy = std::any_of(running_.begin(), running_.end(), [now](const Procedure& procedure) {
    return procedure.waiting_since && now - *procedure.waiting_since > kPatience;
  });
  if (busy) {
    pointer_.Show();
  } else {
    pointer_.Hide();
  }
}

void RunningProcedures::Rests() {
  for (Procedure& procedure : running_) procedure.waiting_since.reset();
  pointer_.Hide();
}

void RunningProcedures::EscapePressed() {
  for (Procedure& procedure : running_) procedure.escape_pressed = true;
}

bool RunningProcedures::EscapePressedInside() const {
  return !running_.empty() && running_.back().escape_pressed;
}

}  // namespace platform::front
