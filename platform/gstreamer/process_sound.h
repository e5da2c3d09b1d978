#pragma once
// The volume and mute of the program's own sound, shared by its items one after the other.
// Not the sink that applies them; an item's supervisor passes them on.

#include <cstdint>
#include <mutex>
#include <optional>

#include "platform/gstreamer/pipeline.h"

namespace platform::gstreamer {

/// Safe to use from any thread. A setting outlives the item for which it was made: the mixer has one entry
/// for the program.
class ProcessSound {
 public:
  struct Wanted {
    /// Linear; nothing means what the sound server remembers. Only the mixer sets it above 1.
    std::optional<double> volume;
    std::optional<bool> mute;
    std::uint64_t version = 0;  ///< changes with every setting
  };

  /// At most 1. What Current already shows as full volume is left as it is: the mixer's amplification beyond
  /// that, or what the sound server remembers.
  void SetVolume(double linear) {
    const std::lock_guard lock(mutex_);
    if (linear < 1.0 || wanted_.volume.value_or(1.0) < 1.0) wanted_.volume = linear;
    ++wanted_.version;
  }
  void SetMute(bool mute) {
    const std::lock_guard lock(mutex_);
    wanted_.mute = mute;
    ++wanted_.version;
  }
  [[nodiscard]] Wanted Get() const {
    const std::lock_guard lock(mutex_);
    return wanted_;
  }
  /// The mixer's amplification, which has a volume above 1, included; full volume while nothing is known.
  [[nodiscard]] StreamVolume Current() const {
    const std::lock_guard lock(mutex_);
    return {wanted_.volume.value_or(1.0), wanted_.mute.value_or(false)};
  }

  /// The mixer shows `observed`, after setting number `version` was applied. A newer setting and a mere
  /// rounding by the mixer are not overwritten. True when that changed the volume or mute.
  bool Observe(const StreamVolume& observed, std::uint64_t version);

 private:
  mutable std::mutex mutex_;
  Wanted wanted_;
};

}  // namespace platform::gstreamer
