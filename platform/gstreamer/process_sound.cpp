#include "platform/gstreamer/process_sound.h"

#include <cmath>
#include <utility>

namespace platform::gstreamer {
namespace {

/// On the mixer's scale of 0 to 1, which is the cube root of the linear one: in hundredths, as mixers show
/// it, the smallest step is ten times this.
constexpr double kRounding = 0.001;

bool IsSameInMixer(double linear, double other) {
  return std::abs(std::cbrt(linear) - std::cbrt(other)) <= kRounding;
}

}  // namespace

bool ProcessSound::Observe(const StreamVolume& observed, std::uint64_t version) {
  const std::lock_guard lock(mutex_);
  if (version != wanted_.version) return false;
  const bool moved = !wanted_.volume || !IsSameInMixer(*wanted_.volume, observed.volume);
  if (moved) wanted_.volume = observed.volume;
  return std::exchange(wanted_.mute, observed.mute) != observed.mute || moved;
}

}  // namespace platform::gstreamer
