#pragma once
// How long something has played, without its pauses. Not a clock; times are passed in.

#include <chrono>
#include <optional>
#include <utility>

namespace platform::win32 {

class PlayedTime {
 public:
  using Clock = std::chrono::steady_clock;

  void Run(Clock::time_point now) {
    if (!since_) since_ = now;
  }
  void Rest(Clock::time_point now) {
    before_ = At(now);
    since_.reset();
  }
  [[nodiscard]] Clock::duration At(Clock::time_point now) const {
    return before_ + (since_ ? now - *since_ : Clock::duration::zero());
  }

 private:
  Clock::duration before_{};
  std::optional<Clock::time_point> since_;
};

}  // namespace platform::win32
