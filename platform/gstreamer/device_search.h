#pragma once
// Looks for a device that takes an item's sound, while there is none and the item runs.
// Not the decisions when to look (device_watch.h), and not the item's own pipeline.

#include <cstdint>
#include <memory>

#include "platform/gstreamer/device_probe.h"
#include "platform/gstreamer/device_watch.h"
#include "platform/gstreamer/pipeline.h"
#include "platform/gstreamer/sound_output.h"
#include "platform/gstreamer/timers.h"

namespace platform::gstreamer {

/// Belongs to one thread, the supervisor's. Lose or Miss, then Continue and OnEvent until it is not lost.
class DeviceSearch {
 public:
  using Clock = DeviceWatch::Clock;
  enum class Interest : std::uint8_t {
    kNone,     ///< the item does not run; a device that nobody hears is not looked for
    kRunning,  ///< the item would sound
  };

  DeviceSearch(OutputChooser& output, PipelineListener& listener) : output_(output), listener_(listener) {}

  /// The device that took the sound has failed; it may still be there.
  void Lose(Clock::time_point now) { watch_.Lose(now); }
  /// There is none, as an attempt has shown.
  void Miss(Clock::time_point now) { watch_.Miss(now); }
  void OnEvent(const PipelineEvent& event);
  /// Looks for a device when it is time.
  void Continue(Clock::time_point now, Interest interest);

  /// No pipeline is of use at present.
  [[nodiscard]] bool IsLost() const { return watch_.Now() != DeviceWatch::State::kTaking; }
  /// No device takes the sound now. False in the moment in which a lost device may turn out to be there.
  [[nodiscard]] bool IsAway(Clock::time_point now) const { return watch_.IsAway(now); }
  [[nodiscard]] Timer NextWake(Clock::time_point now, Interest interest) const;

 private:
  void Look(Clock::time_point now);

  OutputChooser& output_;
  PipelineListener& listener_;
  DeviceWatch watch_;
  std::unique_ptr<DeviceProbe> probe_;
  int serial_ = 0;  ///< negative, unlike those of the item's pipelines
};

}  // namespace platform::gstreamer
