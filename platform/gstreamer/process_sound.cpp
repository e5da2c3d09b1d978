#include "platform/gstreamer/process_sound.h"

#include <algorithm>
#include <cmath>

namespace platform::gstreamer {
namespace {

constexpr double kRounding = 0.002;

}  // namespace

void ProcessSound::Observe(const StreamVolume& observed, std::uint64_t version) {
  const std::lock_guard lock(mutex_);
  if (version != wanted_.version) return;
  // The mixer can amplify beyond full volume; the program's scale ends there.
  const double volume = std::clamp(observed.volume, 0.0, 1.0);
  if (!wanted_.volume || std::abs(*wanted_.volume - volume) > kRounding) wanted_.volume = volume;
  wanted_.mute = observed.mute;
}

}  // namespace platform::gstreamer
