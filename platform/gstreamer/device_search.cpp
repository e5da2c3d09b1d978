#include "platform/gstreamer/device_search.h"

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
  if (IsDue(watch_.NextLook(), now)) Look(now);
}

void DeviceSearch::Look(Clock::time_point now) {
  watch_.LookStarted(now);
  probe_ = DeviceProbe::Create(output_.Choose(OutputChooser::Wish::kDevice).sink, listener_, --serial_);
  if (!probe_) watch_.LookFailed();
}

Timer DeviceSearch::NextWake(Clock::time_point now, Interest interest) const {
  const Timer look = interest == Interest::kRunning ? watch_.NextLook() : std::nullopt;
  return Earliest({watch_.CountsAsAwayAt(now), look});
}

}  // namespace platform::gstreamer
