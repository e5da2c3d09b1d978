#include "platform/gstreamer/device_search.h"

#include <algorithm>
#include <utility>

namespace platform::gstreamer {

void DeviceSearch::OnEvent(const PipelineEvent& event) {
  if (!probe_ || event.serial != probe_->Serial()) return;
  probe_.reset();
  event.kind == PipelineEvent::Kind::kDeviceFound ? watch_.Found() : watch_.LookFailed();
}

void DeviceSearch::Continue(Clock::time_point now, Interest interest) {
  if (interest == Interest::kNone) {
    if (std::exchange(probe_, nullptr)) watch_.LookDropped();
    return;
  }
  if (watch_.Now() == DeviceWatch::State::kLost && now >= watch_.NextLook()) Look(now);
}

void DeviceSearch::Look(Clock::time_point now) {
  watch_.LookStarted(now);
  probe_ = DeviceProbe::Create(output_.Choose(OutputChooser::Wish::kDevice).sink, listener_, --serial_);
  if (!probe_) watch_.LookFailed();
}

std::optional<DeviceSearch::Clock::time_point> DeviceSearch::NextWake(Clock::time_point now,
                                                                      Interest interest) const {
  std::optional<Clock::time_point> wake = watch_.CountsAsAwayAt(now);
  if (interest == Interest::kRunning && watch_.Now() == DeviceWatch::State::kLost) {
    wake = std::min(wake.value_or(watch_.NextLook()), watch_.NextLook());
  }
  return wake;
}

}  // namespace platform::gstreamer
