#include "platform/gstreamer/item_pipelines.h"

#include <utility>

namespace platform::gstreamer {
namespace {

void SetVolume(const std::shared_ptr<Pipeline>& pipeline, const ProcessSound::Wanted& wanted) {
  if (!pipeline) return;
  if (wanted.volume) pipeline->SetVolume(*wanted.volume);
  if (wanted.mute) pipeline->SetMute(*wanted.mute);
}

bool IsOf(const PipelineEvent& event, const std::shared_ptr<Pipeline>& pipeline) {
  return pipeline && event.serial == pipeline->Serial();
}

}  // namespace

ItemPipelines::ItemPipelines(PipelineInput input, std::shared_ptr<ItemState> state,
                             std::shared_ptr<ItemServices> services)
    : input_(std::move(input)), state_(std::move(state)), services_(std::move(services)) {}

bool ItemPipelines::IsHeard(const PipelineEvent& event) const { return IsOf(event, heard_.pipeline); }

bool ItemPipelines::IsAttempted(const PipelineEvent& event) const {
  return IsOf(event, attempt_.line.pipeline);
}

bool ItemPipelines::Open(OutputChooser::Output output, Clock::time_point now, Silence silence) {
  attempt_ = {};
  auto pipeline = Pipeline::Create(input_, services_->pipeline, std::move(output), *state_, ++serial_);
  if (!pipeline) return false;
  attempt_.line.pipeline = pipeline;
  attempt_.deadline = now + services_->open_deadline;
  pipeline->SetRefill(attempt_.line.reserve.Most());
  SetVolume(pipeline, services_->sound.Get());
  if (silence == Silence::kExplained) pipeline->ExplainSilence();
  pipeline->Preroll();
  return true;
}

void ItemPipelines::DropAttempt() {
  const Attempt dropped = std::exchange(attempt_, {});
  if (dropped.line.pipeline) dropped.line.pipeline->Stop();
}

bool ItemPipelines::Promote() {
  const Attempt opened = std::exchange(attempt_, {});
  heard_ = opened.line;
  state_->SetCurrent(heard_.pipeline);
  return opened.source_gone;
}

void ItemPipelines::DropHeard() {
  state_->SetCurrent(nullptr);
  StopHeard(std::exchange(heard_, {}).pipeline, Mixer::kAnswers);
}

ItemPipelines::Both ItemPipelines::TakeBoth() {
  state_->SetCurrent(nullptr);
  return {std::exchange(heard_, {}).pipeline, std::exchange(attempt_, {}).line.pipeline};
}

void ItemPipelines::StopBoth(const Both& both, Mixer mixer) {
  StopHeard(both.heard, mixer);
  if (both.attempted) both.attempted->Stop();
}

void ItemPipelines::StopHeard(const std::shared_ptr<Pipeline>& heard, Mixer mixer) {
  if (!heard) return;
  // The sink reports what the mixer changes with the next sound that it passes on, and there will be none.
  if (mixer == Mixer::kAnswers) ObserveMixer(heard);
  heard->Stop();
}

void ItemPipelines::Turn(Sound sound) {
  if (heard_.pipeline) heard_.SetPlaying(sound == Sound::kOn && heard_.HasSound(), Clock::now());
}

void ItemPipelines::FollowVolume() {
  const auto wanted = services_->sound.Get();
  if (std::exchange(volume_version_, wanted.version) != wanted.version) {
    SetVolume(heard_.pipeline, wanted);
    SetVolume(attempt_.line.pipeline, wanted);
  }
  if (std::exchange(mixer_moved_, false)) ObserveMixer(heard_.pipeline);
}

void ItemPipelines::ObserveMixer(const std::shared_ptr<Pipeline>& heard) {
  // A sink without a device only repeats what it was given.
  if (!heard || !heard->Heard()) return;
  if (!services_->sound.Observe(heard->ReadVolume(), volume_version_)) return;
  SetVolume(attempt_.line.pipeline, services_->sound.Get());
}

}  // namespace platform::gstreamer
