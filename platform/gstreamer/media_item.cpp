#include "platform/gstreamer/media_item.h"

#include <algorithm>
#include <utility>

namespace platform::gstreamer {
namespace {

constexpr std::chrono::milliseconds kCallerWaits{50};
constexpr std::int64_t kNanosecondsPerUnit = 100;

}  // namespace

MediaItem::MediaItem(PipelineInput input, std::shared_ptr<ItemServices> services)
    : state_(std::make_shared<ItemState>()), services_(std::move(services)) {
  thread_ = std::thread([input = std::move(input), state = state_, shared = services_] {
    MediaSupervisor(input, state, shared).Run();
  });
}

MediaItem::~MediaItem() {
  state_->Request(Wanted::kShutDown);
  if (state_->WaitCarriedOut(kCallerWaits)) {
    thread_.join();
    return;
  }
  // A sound server that hangs can hold the thread for as long as it likes, and the caller must not wait for
  // that. The thread owns all that it uses and ends by itself.
  thread_.detach();
}

void MediaItem::Start() { state_->Request(Wanted::kRunning); }

void MediaItem::Pause() { state_->Request(Wanted::kPaused); }

void MediaItem::Stop() {
  state_->Request(Wanted::kStopped);
  state_->WaitCarriedOut(kCallerWaits);
}

void MediaItem::ShutDown() {
  state_->Request(Wanted::kShutDown);
  state_->WaitCarriedOut(kCallerWaits);
}

ClockState MediaItem::State() const {
  if (state_->Ended()) return ClockState::kStopped;
  switch (state_->Requested()) {
    case Wanted::kRunning:
      return ClockState::kRunning;
    case Wanted::kPaused:
      return ClockState::kPaused;
    default:
      return ClockState::kStopped;
  }
}

std::int64_t MediaItem::Position() const {
  if (State() == ClockState::kStopped) return 0;
  return state_->PlayedTime() / kNanosecondsPerUnit;
}

std::int64_t MediaItem::Duration() const { return state_->Duration() / kNanosecondsPerUnit; }

std::vector<float> MediaItem::Peaks() const {
  const auto channels = static_cast<std::size_t>(std::max(0, Channels()));
  std::vector<float> peaks(channels, 0.0F);
  const auto pipeline = state_->Current();
  if (!pipeline || State() != ClockState::kRunning) return peaks;
  const StreamVolume volume = services_->sound.Current();
  const float factor = volume.mute ? 0.0F : static_cast<float>(volume.volume);
  const std::vector<float> measured = pipeline->Peaks();
  for (std::size_t channel = 0; channel < std::min(channels, measured.size()); ++channel) {
    peaks[channel] = std::min(1.0F, measured[channel] * factor);
  }
  return peaks;
}

}  // namespace platform::gstreamer
