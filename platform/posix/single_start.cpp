#include "platform/posix/single_start.h"

#include <time.h>

namespace platform::posix {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

void PauseBetweenTries() {
  const timespec pause{0, 20'000'000};
  ::nanosleep(&pause, nullptr);
}

}  // namespace

SingleStart::SingleStart(const Places& places, const StartRequest& request, milliseconds limit)
    : lock_(places.lock), outcome_(Settle(places, request, limit)) {
  if (outcome_ == Outcome::kRuns && lock_.Try() == StartLock::State::kHeld) {
    listener_ = std::make_unique<StartListener>(places.socket);
  }
}

SingleStart::Outcome SingleStart::Settle(const Places& places, const StartRequest& request,
                                         milliseconds limit) {
  const auto deadline = Clock::now() + limit;
  while (true) {
    if (lock_.Try() != StartLock::State::kTaken) return Outcome::kRuns;
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    if (left <= milliseconds(0)) return Outcome::kUnanswered;
    const AskResult result = AskRunningStart(places.socket, request, left);
    if (result == AskResult::kAccepted) return Outcome::kHandedOver;
    PauseBetweenTries();
  }
}

}  // namespace platform::posix
