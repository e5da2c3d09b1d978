#pragma once
// When to look for a sound device again after one was lost, and whether to try the one that is found. Not the
// look itself (media/default_device.h); times are passed in.

#include <chrono>

namespace platform::win32 {

/// A second after each look. A device that takes sound, loses it again soon and is there all the while is
/// most likely a driver that fails: every attempt with it connects to the station, so they are rare, and so
/// are the looks at it, which open it.
class DeviceWait {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr Clock::duration kLook = std::chrono::seconds(1);
  static constexpr Clock::duration kRareLook = std::chrono::seconds(10);
  static constexpr Clock::duration kRareTry = std::chrono::seconds(30);
  /// Whoever has played for this long has a device that works.
  static constexpr Clock::duration kSteady = std::chrono::seconds(10);

  /// A session was started on the device that was found.
  void Started(Clock::time_point now);
  void Lost(Clock::time_point now);
  [[nodiscard]] bool IsDue(Clock::time_point now) const { return now >= next_look_; }
  /// There was no device.
  void FoundNone(Clock::time_point now);
  /// There was one. False when it is not to be tried yet.
  bool Found(Clock::time_point now);

 private:
  Clock::time_point steady_from_{};
  Clock::time_point next_look_{};
  Clock::time_point next_try_{};
};

}  // namespace platform::win32
