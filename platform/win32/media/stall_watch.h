#pragma once
// Whether a station that should be heard has stopped without saying so. Not what is done then
// (media/renewal.h).

#include <chrono>
#include <cstdint>
#include <optional>

namespace platform::win32 {

/// A network that disappears closes no connection, so the system may wait for it without an end.
class StallWatch {
 public:
  using Clock = std::chrono::steady_clock;
  /// A gap between two looks counts as this at most: nobody looks while the machine sleeps.
  static constexpr Clock::duration kLongestGap = std::chrono::seconds(3);

  explicit StallWatch(Clock::duration limit) : limit_(limit) {}

  /// What the station's source has said last.
  enum class Source : std::uint8_t { kSends, kBuffers };
  /// Looks again, while the station should be heard; `played` is what the session's clock says, if it does.
  /// True when the clock has stood still, or the source has waited for data, for the whole limit.
  bool Look(std::optional<std::int64_t> played, Source source, Clock::time_point now);
  /// The station need not be heard.
  void Reset() { *this = StallWatch(limit_); }

 private:
  Clock::duration limit_;
  std::optional<Clock::time_point> looked_at_;
  std::optional<std::int64_t> played_;
  Clock::duration still_{};
};

}  // namespace platform::win32
