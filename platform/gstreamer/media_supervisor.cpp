#include "platform/gstreamer/media_supervisor.h"

#include <algorithm>
#include <utility>

#include "platform/gstreamer/results.h"

namespace platform::gstreamer {
namespace {

using std::chrono::seconds;

/// The buffer announces once that it is full enough, and by then some of it may have gone on already.
constexpr std::chrono::milliseconds kLookAtBufferEvery{50};

}  // namespace

ItemServices::ItemServices(const GstMediaOptions& options)
    : output(options),
      pipeline{options.user_agent, options.certificate_file, std::max(seconds(1), options.stall_limit)},
      open_deadline(options.open_deadline),
      log(options.log) {}

MediaSupervisor::MediaSupervisor(PipelineInput input, std::shared_ptr<ItemState> state,
                                 std::shared_ptr<ItemServices> services)
    : input_(std::move(input)),
      state_(std::move(state)),
      services_(std::move(services)),
      device_(services_->output, *state_) {}

void MediaSupervisor::Run() {
  OpenNext(OutputChooser::Wish::kDeviceOrNowhere);
  state_->SetReport(Report());
  while (wanted_ != Wanted::kShutDown) {
    const ItemState::Work work = state_->WaitForWork(NextWake());
    for (const PipelineEvent& event : work.events) OnEvent(event);
    if (work.request != request_) {
      request_ = work.request;
      OnRequest(work.wanted);
    }
    CheckTimers();
    ApplyVolume();
    AdjustPlaying();
    state_->SetReport(Report());
    state_->CarriedOut(request_);
  }
}

void MediaSupervisor::OpenNext(OutputChooser::Wish wish) {
  const auto now = Clock::now();
  auto output = services_->output.Choose(wish);
  // A sound server that hangs can hold that up for longer than anybody waits.
  if (state_->Requested() == Wanted::kShutDown) return;
  if (!output.heard && services_->output.WantsDevice()) device_.Miss(now);
  if (wish == OutputChooser::Wish::kDevice && !output.sink) return;
  schedule_.AttemptStarted(now);
  opening_ = {};
  const bool heard = output.heard;
  opening_.pipeline = Pipeline::Create(input_, services_->pipeline, std::move(output), *state_, ++serial_);
  if (!opening_.pipeline && heard) return OnOutputRefused();
  if (!opening_.pipeline) return OnOpenFailed(kEFail, {PlaybackFailure::kNoSoundDevice});
  opening_.deadline = now + services_->open_deadline;
  opening_.pipeline->SetRefill(opening_.reserve.Most());
  const auto wanted = services_->sound.Get();
  if (wanted.volume) opening_.pipeline->SetVolume(*wanted.volume);
  if (wanted.mute) opening_.pipeline->SetMute(*wanted.mute);
  // A stream that was heard before is asked again soon enough; nothing is to be explained.
  if (!ever_opened_) opening_.pipeline->ExplainSilence();
  opening_.pipeline->Preroll();
}

void MediaSupervisor::OnEvent(const PipelineEvent& event) {
  device_.OnEvent(event);
  if (opening_.pipeline && event.serial == opening_.pipeline->Serial()) return OnOpeningEvent(event);
  if (playing_.pipeline && event.serial == playing_.pipeline->Serial()) return OnPlayingEvent(event);
}

void MediaSupervisor::OnOpeningEvent(const PipelineEvent& event) {
  using Kind = PipelineEvent::Kind;
  switch (event.kind) {
    case Kind::kPrerolled:
      return OnPrerolled();
    case Kind::kBuffering:
      opening_.LookAtBuffer(Clock::now());
      return;
    case Kind::kSourceEnded:
      opening_.source_gone = true;
      return;
    case Kind::kFailed:
      if (event.output_failed && opening_.pipeline->Heard()) return OnOutputRefused();
      return OnOpenFailed(event.result, event.cause);
    default:
      return;
  }
}

void MediaSupervisor::OnPlayingEvent(const PipelineEvent& event) {
  using Kind = PipelineEvent::Kind;
  switch (event.kind) {
    case Kind::kBuffering:
      return LookAtBuffer();
    case Kind::kSourceEnded:
      return LoseSource();
    case Kind::kEnded:
      LoseSource();
      return EndOnceHeard();
    case Kind::kFailed:
      return OnPlayingFailed(event);
    case Kind::kDurationChanged:
      return OnDuration();
    case Kind::kVolumeChanged:
      volume_moved_ = true;
      return;
    case Kind::kLatencyChanged:
      return playing_.pipeline->RecalculateLatency();
    default:
      return;
  }
}

void MediaSupervisor::LookAtBuffer() {
  if (playing_.LookAtBuffer(Clock::now()) == Line::Buffer::kDry && playing_.source_gone) EndOnceHeard();
}

void MediaSupervisor::OnPrerolled() {
  const std::int64_t played = live_ || opening_.sought ? 0 : state_->PlayedTime();
  if (played > 0) {
    opening_.sought = true;
    if (opening_.pipeline->Seek(played)) return;
    state_->RestartTime();
  }
  opening_.prerolled = true;
  if (!playing_.pipeline) Promote();
}

void MediaSupervisor::OnOutputRefused() {
  if (opening_.pipeline) opening_.pipeline->Stop();
  opening_ = {};
  device_.Miss(Clock::now());
  // The address is tried all the same.
  if (!ever_opened_) OpenNext(OutputChooser::Wish::kNowhere);
}

void MediaSupervisor::OnSilent() { live_ ? DropPlaying() : Finish(); }

void MediaSupervisor::Promote() {
  playing_ = std::exchange(opening_, {});
  const bool lost_meanwhile = std::exchange(playing_.source_gone, false);
  state_->SetCurrent(playing_.pipeline);
  schedule_.AttemptOpened();
  cause_ = {};
  if (!ever_opened_) {
    ever_opened_ = true;
    live_ = input_.FromServer();
    volume_moved_ = true;
    ApplyVolume();
  }
  OnDuration();
  if (lost_meanwhile) LoseSource();
  state_->SetOpened(kSOk, Report());
}

void MediaSupervisor::OnDuration() {
  const auto duration = playing_.pipeline->Duration();
  if (!duration) return;
  live_ = false;
  playing_.pipeline->AllowResuming();
  state_->SetDuration(*duration);
}

void MediaSupervisor::OnOpenFailed(HResult result, FailureCause cause) {
  if (opening_.pipeline) opening_.pipeline->Stop();
  opening_ = {};
  schedule_.AttemptFailed(Clock::now(), ReconnectSchedule::Weigh(cause));
  cause_ = std::move(cause);
  if (!ever_opened_) {
    finished_ = true;
    state_->SetOpened(result, Report());
  } else if (!live_) {
    Finish();
  }
}

void MediaSupervisor::OnPlayingFailed(const PipelineEvent& event) {
  if (event.output_failed && playing_.pipeline->Heard()) {
    device_.Lose(Clock::now());
    return LoseDevice();
  }
  if (!live_) {
    cause_ = event.cause;
    return Finish();
  }
  LoseSource();
  if (!playing_.filled) EndOnceHeard();
}

void MediaSupervisor::LoseSource() {
  if (!live_ || playing_.source_gone) return;
  playing_.source_gone = true;
  cause_ = {PlaybackFailure::kConnectionLost};
  schedule_.Lose(Clock::now(), playing_.played_since);
  services_->log("the stream broke off and is opened again");
}

void MediaSupervisor::EndOnceHeard() {
  if (!playing_.playing) return OnSilent();
  if (!playing_.silent_at) playing_.silent_at = Clock::now() + kDeviceBuffer;
}

void MediaSupervisor::DropPlaying() {
  state_->SetCurrent(nullptr);
  playing_.pipeline->Stop();
  playing_ = {};
  if (opening_.prerolled) Promote();
}

void MediaSupervisor::Finish() {
  finished_ = true;
  DropAll();
  state_->SetEnded();
}

void MediaSupervisor::LoseDevice() {
  services_->log("the sound device is gone: looking for one");
  DropLines();
}

void MediaSupervisor::DropAll() {
  DropLines();
  state_->RestartTime();
}

void MediaSupervisor::DropLines() {
  state_->SetCurrent(nullptr);
  const Line playing = std::exchange(playing_, {});
  const Line opening = std::exchange(opening_, {});
  schedule_.Reset();
  // A sound server that hangs can hold up what follows.
  state_->SetReport(Report());
  if (playing.pipeline) playing.pipeline->Stop();
  if (opening.pipeline) opening.pipeline->Stop();
}

void MediaSupervisor::OnRequest(Wanted wanted) {
  wanted_ = wanted;
  switch (wanted) {
    case Wanted::kRunning:
      if (ever_opened_) finished_ = false;
      // What was opened without a device, to try the address, would be old when one is found.
      if (device_.IsLost()) DropLines();
      return;
    case Wanted::kStopped:
    case Wanted::kShutDown:
      return DropAll();
    default:
      return;
  }
}

PlaybackState MediaSupervisor::State() const {
  if (finished_) {
    return cause_.failure == PlaybackFailure::kNone ? PlaybackState::kEnded : PlaybackState::kFailed;
  }
  if (!ever_opened_ || wanted_ == Wanted::kOpened) return PlaybackState::kConnecting;
  if (wanted_ == Wanted::kPaused) return PlaybackState::kPaused;
  // What is buffered bridges a loss that the next attempt ends; then there is nothing to report.
  if (playing_.playing && !(playing_.source_gone && schedule_.Failed())) return PlaybackState::kPlaying;
  if (playing_.pipeline && !playing_.source_gone) return PlaybackState::kBuffering;
  if (device_.IsAway(Clock::now())) return PlaybackState::kNoDevice;
  return schedule_.Lost() ? PlaybackState::kReconnecting : PlaybackState::kConnecting;
}

ItemReport MediaSupervisor::Report() const {
  ItemReport report{State(), {}, playing_.percent, {}};
  // A loss that is bridged has a cause already, but there is nothing to report yet.
  const bool in_trouble =
      report.state == PlaybackState::kFailed || report.state == PlaybackState::kReconnecting;
  if (in_trouble) report.cause = cause_;
  if (WantsAttempt()) report.next_try = schedule_.NextAttempt();
  return report;
}

DeviceSearch::Interest MediaSupervisor::Interest() const {
  return Runs() ? DeviceSearch::Interest::kRunning : DeviceSearch::Interest::kNone;
}

bool MediaSupervisor::WantsAttempt() const {
  const bool idle = !opening_.pipeline && (!playing_.pipeline || playing_.source_gone);
  return Runs() && idle && !device_.IsLost();
}

bool MediaSupervisor::WaitsForBuffer() const { return Runs() && playing_.pipeline && !playing_.filled; }

bool MediaSupervisor::MayStall() const { return live_ && WaitsForBuffer() && !playing_.source_gone; }

MediaSupervisor::Clock::time_point MediaSupervisor::StallTime() const {
  return playing_.pipeline->LastData() + services_->pipeline.stall_limit;
}

std::optional<MediaSupervisor::Clock::time_point> MediaSupervisor::NextWake() const {
  std::optional<Clock::time_point> wake;
  const auto consider = [&wake](Clock::time_point time) { wake = wake ? std::min(*wake, time) : time; };
  if (opening_.pipeline && !opening_.prerolled) consider(opening_.deadline);
  if (playing_.silent_at) consider(*playing_.silent_at);
  if (playing_.dry_at) consider(*playing_.dry_at);
  if (WantsAttempt()) consider(schedule_.NextAttempt());
  if (WaitsForBuffer()) consider(Clock::now() + kLookAtBufferEvery);
  if (MayStall()) consider(StallTime());
  if (const auto check = playing_.NextStandstillCheck()) consider(*check);
  if (const auto look = device_.NextWake(Clock::now(), Interest())) consider(*look);
  return wake;
}

void MediaSupervisor::CheckTimers() {
  const auto now = Clock::now();
  if (opening_.pipeline && !opening_.prerolled && now >= opening_.deadline) {
    OnOpenFailed(kMfENetTimeout, {PlaybackFailure::kNoAnswer});
  }
  if (playing_.silent_at && now >= *playing_.silent_at) OnSilent();
  if (WaitsForBuffer()) LookAtBuffer();
  if (playing_.dry_at && now >= *playing_.dry_at) playing_.dry_at.reset();
  if (MayStall() && now >= StallTime()) {
    LoseSource();
    DropPlaying();
  }
  if (playing_.StandsStill(now)) {
    device_.Miss(now);
    LoseDevice();
  }
  device_.Continue(now, Interest());
  if (WantsAttempt() && now >= schedule_.NextAttempt()) OpenNext(OutputChooser::Wish::kDevice);
}

void MediaSupervisor::AdjustPlaying() {
  if (!playing_.pipeline) return;
  playing_.SetPlaying(wanted_ == Wanted::kRunning && playing_.HasSound(), Clock::now());
}

void MediaSupervisor::ApplyVolume() {
  const auto wanted = services_->sound.Get();
  if (wanted.version != volume_version_) {
    volume_version_ = wanted.version;
    for (const Line* line : {&playing_, &opening_}) {
      if (line->pipeline && wanted.volume) line->pipeline->SetVolume(*wanted.volume);
      if (line->pipeline && wanted.mute) line->pipeline->SetMute(*wanted.mute);
    }
  }
  if (std::exchange(volume_moved_, false)) ObserveVolume();
}

void MediaSupervisor::ObserveVolume() {
  // A sink without a device only repeats what it was given.
  if (!playing_.pipeline || !playing_.pipeline->Heard()) return;
  services_->sound.Observe(playing_.pipeline->ReadVolume(), volume_version_);
}

}  // namespace platform::gstreamer
