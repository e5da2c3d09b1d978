#include "platform/gstreamer/media_supervisor.h"

#include <utility>

#include "platform/gstreamer/results.h"

namespace platform::gstreamer {
namespace {

using Sound = ItemPipelines::Sound;

/// The buffer announces once that it is full enough, and by then the device may have taken some of it.
constexpr std::chrono::milliseconds kLookAtBufferEvery{50};
/// Nothing reports that a length can be read again.
constexpr std::chrono::milliseconds kAskForLengthEvery{20};
/// What is left of an opening's time when it stops waiting for the length.
constexpr std::chrono::seconds kReserve{2};

}  // namespace

MediaSupervisor::MediaSupervisor(const PipelineInput& input, std::shared_ptr<ItemState> state,
                                 std::shared_ptr<ItemServices> services)
    : state_(std::move(state)),
      services_(std::move(services)),
      pipelines_(input, state_, services_),
      device_(services_->output, *state_),
      kind_(input.FromServer() ? ItemKind::kLive : ItemKind::kFile) {}

void MediaSupervisor::Run() {
  if (services_->framework.Ready()) {
    Open(OutputChooser::Wish::kDeviceOrNowhere);
  } else {
    OnAttemptFailed(kEFail, {PlaybackFailure::kOther});
  }
  state_->SetReport(Report());
  while (wanted_ != Wanted::kShutDown) {
    const ItemState::Work work = state_->WaitForWork(NextWake());
    for (const PipelineEvent& event : work.events) OnEvent(event);
    if (work.request != request_) {
      request_ = work.request;
      if (work.stop_first) OnRequest(Wanted::kStopped);
      OnRequest(work.wanted);
    }
    CheckTimers();
    pipelines_.FollowVolume();
    pipelines_.Turn(wanted_ == Wanted::kRunning ? Sound::kOn : Sound::kOff);
    state_->SetReport(Report());
    state_->CarriedOut(request_);
  }
}

void MediaSupervisor::OnRequest(Wanted wanted) {
  wanted_ = wanted;
  switch (wanted) {
    case Wanted::kRunning:
      Apply(ItemEvent::kStart);
      if (device_.IsLost()) Apply(ItemEvent::kDeviceGone);
      return;
    case Wanted::kStopped:
    case Wanted::kShutDown:
      return Apply(ItemEvent::kStop);
    case Wanted::kPaused:
      // It may have ended in the moment in which it was paused.
      if (phase_ == Phase::kEnded) state_->SetEnded(request_);
      return;
    case Wanted::kOpened:
      return;
  }
}

void MediaSupervisor::OnEvent(const PipelineEvent& event) {
  device_.OnEvent(event);
  if (pipelines_.IsAttempted(event)) return OnAttemptEvent(event);
  if (pipelines_.IsHeard(event)) return OnHeardEvent(event);
}

void MediaSupervisor::OnAttemptEvent(const PipelineEvent& event) {
  using Kind = PipelineEvent::Kind;
  Attempt& attempt = pipelines_.Attempted();
  switch (event.kind) {
    case Kind::kPrerolled:
      return OnPrerolled();
    case Kind::kBuffering:
      attempt.line.LookAtBuffer(Clock::now());
      return;
    case Kind::kSourceEnded:
      attempt.source_gone = true;
      return;
    case Kind::kFailed:
      if (event.output_failed && attempt.line.pipeline->Heard()) return OnNoDevice();
      return OnAttemptFailed(event.result, event.cause);
    default:
      return;
  }
}

void MediaSupervisor::OnHeardEvent(const PipelineEvent& event) {
  using Kind = PipelineEvent::Kind;
  switch (event.kind) {
    case Kind::kBuffering:
      return LookAtBuffer();
    case Kind::kSourceEnded:
      return Apply(ItemEvent::kSourceEnded);
    case Kind::kEnded:
      Apply(ItemEvent::kSourceEnded);
      return Apply(ItemEvent::kNothingLeft);
    case Kind::kFailed:
      return OnHeardFailed(event);
    case Kind::kDurationChanged:
      return static_cast<void>(NoteLength(*pipelines_.Heard().pipeline));
    case Kind::kVolumeChanged:
      return pipelines_.MixerMoved();
    case Kind::kLatencyChanged:
      return pipelines_.Heard().pipeline->RecalculateLatency();
    default:
      return;
  }
}

void MediaSupervisor::OnPrerolled() {
  Attempt& attempt = pipelines_.Attempted();
  const bool from_its_start = kind_ == ItemKind::kLive || attempt.sought;
  const std::int64_t played = from_its_start ? 0 : state_->PlayedTime();
  if (played > 0) {
    attempt.sought = true;
    if (attempt.line.pipeline->Seek(played)) return;
    state_->RestartTime();
  }
  if (attempt.length_deadline) return;
  const auto now = Clock::now();
  const auto limit = now + services_->length_limit;
  attempt.length_deadline = attempt.deadline ? std::min(limit, *attempt.deadline - kReserve) : now;
  attempt.deadline.reset();
  if (phase_ == Phase::kOpening) return FinishOpening(now);
  attempt.length_deadline.reset();
  Apply(ItemEvent::kAttemptOpened);
}

void MediaSupervisor::FinishOpening(Clock::time_point now) {
  Attempt& attempt = pipelines_.Attempted();
  const auto length = NoteLength(*attempt.line.pipeline);
  if (length == PlayingLength::State::kAwaited && !IsDue(attempt.length_deadline, now)) return;
  attempt.length_deadline.reset();
  Apply(ItemEvent::kAttemptOpened);
}

void MediaSupervisor::OnAttemptFailed(HResult result, FailureCause cause) {
  schedule_.AttemptFailed(Clock::now(), live::ReconnectSchedule::Weigh(cause.failure, cause.http_status));
  cause_ = std::move(cause);
  Apply(ItemEvent::kAttemptFailed);
  if (phase_ == Phase::kFailed) state_->SetOpened(result, Report());
}

void MediaSupervisor::OnNoDevice() {
  device_.Miss(Clock::now());
  Apply(ItemEvent::kNoDevice);
}

void MediaSupervisor::OnHeardFailed(const PipelineEvent& event) {
  if (event.output_failed && pipelines_.Heard().pipeline->Heard()) {
    device_.Lose(Clock::now());
    return OnDeviceGone();
  }
  if (kind_ == ItemKind::kFile) cause_ = event.cause;
  Apply(ItemEvent::kSourceBroken);
  // Nothing fills the buffer any more.
  if (!pipelines_.Heard().filled) Apply(ItemEvent::kNothingLeft);
}

void MediaSupervisor::OnDeviceGone() {
  services_->log("the sound device is gone: looking for one");
  Apply(ItemEvent::kDeviceGone);
}

PlayingLength::State MediaSupervisor::NoteLength(Pipeline& pipeline) {
  const PlayingLength length = pipeline.Length();
  if (length.state == PlayingLength::State::kNone) return length.state;
  kind_ = ItemKind::kFile;
  pipeline.AllowResuming();
  if (length.state == PlayingLength::State::kKnown) state_->SetDuration(length.nanoseconds);
  return length.state;
}

void MediaSupervisor::LookAtBuffer() {
  const auto now = Clock::now();
  Line& heard = pipelines_.Heard();
  if (heard.LookAtBuffer(now) != Line::Buffer::kDry) return;
  if (phase_ != Phase::kSounding) return Apply(ItemEvent::kNothingLeft);
  heard.PauseOnceDeviceIsDry(now);
}

void MediaSupervisor::CheckTimers() {
  const auto now = Clock::now();
  Line& heard = pipelines_.Heard();
  if (IsDue(pipelines_.Attempted().deadline, now)) {
    OnAttemptFailed(kMfENetTimeout, {PlaybackFailure::kNoAnswer});
  }
  if (pipelines_.Attempted().length_deadline) FinishOpening(now);
  if (IsDue(heard.silent_at, now)) Apply(ItemEvent::kHeardOut);
  if (WaitsForBuffer()) LookAtBuffer();
  if (IsDue(heard.dry_at, now)) heard.dry_at.reset();
  if (IsDue(StallTime(), now)) {
    Apply(ItemEvent::kSourceEnded);
    Apply(ItemEvent::kHeardOut);
  }
  if (heard.StandsStill(now)) {
    device_.Miss(now);
    OnDeviceGone();
  }
  device_.Continue(now, Interest());
  if (IsDue(NextAttempt(), now)) Apply(ItemEvent::kAttemptDue);
}

void MediaSupervisor::Apply(ItemEvent event) {
  const Phase before = phase_;
  const Step step = NextStep(before, event, kind_);
  phase_ = step.next;
  CarryOut(step.action, before);
}

void MediaSupervisor::CarryOut(Action action, Phase before) {
  switch (action) {
    case Action::kNothing:
      return;
    case Action::kOpen:
      return Open(OutputChooser::Wish::kDevice);
    case Action::kOpenUnheard:
      pipelines_.DropAttempt();
      return Open(OutputChooser::Wish::kNowhere);
    case Action::kDropAttempt:
      return pipelines_.DropAttempt();
    case Action::kPromote:
      return Promote(before);
    case Action::kNoteLoss:
      return NoteLoss();
    case Action::kAwaitSilence:
      return AwaitSilence();
    case Action::kDropHeard:
      return pipelines_.DropHeard();
    case Action::kChangeOver:
      pipelines_.DropHeard();
      return Promote(before);
    case Action::kDropBoth:
      return DropBoth();
    case Action::kEnd:
      DropBoth();
      state_->RestartTime();
      if (phase_ == Phase::kEnded) state_->SetEnded(request_);
      return;
  }
}

void MediaSupervisor::Open(OutputChooser::Wish wish) {
  const auto now = Clock::now();
  auto output = services_->output.Choose(wish);
  // A sound server that hangs can hold that up for longer than anybody waits.
  if (state_->Requested() == Wanted::kShutDown) return Discard(output);
  if (!output.sink && wish == OutputChooser::Wish::kDevice) return OnNoDevice();
  if (!output.heard && services_->output.WantsDevice()) device_.Miss(now);
  schedule_.AttemptStarted(now);
  const bool heard = output.heard;
  // A stream that was heard before is asked again soon enough; nothing is to be explained.
  const auto silence =
      phase_ == Phase::kOpening ? ItemPipelines::Silence::kExplained : ItemPipelines::Silence::kAsItIs;
  if (pipelines_.Open(std::move(output), now, silence)) return;
  if (heard) return OnNoDevice();
  OnAttemptFailed(kEFail, {PlaybackFailure::kNoSoundDevice});
}

void MediaSupervisor::Promote(Phase before) {
  const bool source_gone = pipelines_.Promote();
  schedule_.AttemptOpened();
  cause_ = {};
  if (before == Phase::kOpening) {
    pipelines_.MixerMoved();
    pipelines_.FollowVolume();
  } else {
    NoteLength(*pipelines_.Heard().pipeline);
  }
  if (source_gone) Apply(ItemEvent::kSourceEnded);
  state_->SetOpened(kSOk, Report());
}

void MediaSupervisor::NoteLoss() {
  cause_ = {PlaybackFailure::kConnectionLost};
  schedule_.Lose(Clock::now(), pipelines_.Heard().played_since);
  services_->log("the stream broke off and is opened again");
}

void MediaSupervisor::AwaitSilence() {
  Line& heard = pipelines_.Heard();
  if (!heard.playing) return Apply(ItemEvent::kHeardOut);
  if (!heard.silent_at) heard.silent_at = Clock::now() + kDeviceBuffer;
}

void MediaSupervisor::DropBoth() {
  const ItemPipelines::Both dropped = pipelines_.TakeBoth();
  const auto mixer = device_.IsLost() ? ItemPipelines::Mixer::kIsGone : ItemPipelines::Mixer::kAnswers;
  schedule_.Reset();
  // A sound server that hangs can hold up what follows.
  state_->SetReport(Report());
  pipelines_.StopBoth(dropped, mixer);
}

ItemReport MediaSupervisor::Report() const {
  const Line& heard = pipelines_.Heard();
  return ReportOf({.phase = phase_,
                   .wanted = wanted_,
                   .plays = heard.playing,
                   .is_lost = schedule_.Lost(),
                   .attempt_failed = schedule_.Failed(),
                   .device_is_away = device_.IsAway(Clock::now()),
                   .cause = cause_,
                   .buffered_percent = heard.percent,
                   .next_attempt = NextAttempt()});
}

DeviceSearch::Interest MediaSupervisor::Interest() const {
  return Runs(phase_, wanted_) ? DeviceSearch::Interest::kRunning : DeviceSearch::Interest::kNone;
}

bool MediaSupervisor::WaitsForBuffer() const {
  const Line& heard = pipelines_.Heard();
  return Runs(phase_, wanted_) && heard.pipeline && !heard.filled;
}

Timer MediaSupervisor::NextAttempt() const {
  if (!WantsAttempt(phase_, wanted_) || device_.IsLost()) return std::nullopt;
  return schedule_.NextAttempt();
}

Timer MediaSupervisor::StallTime() const {
  const bool may_stall = kind_ == ItemKind::kLive && phase_ == Phase::kSounding && WaitsForBuffer();
  if (!may_stall) return std::nullopt;
  return pipelines_.Heard().pipeline->LastData() + services_->pipeline.stall_limit;
}

Timer MediaSupervisor::NextWake() const {
  const auto now = Clock::now();
  const Line& heard = pipelines_.Heard();
  const Timer look = WaitsForBuffer() ? Timer(now + kLookAtBufferEvery) : std::nullopt;
  const Attempt& attempt = pipelines_.Attempted();
  const Timer ask = attempt.length_deadline ? Timer(now + kAskForLengthEvery) : std::nullopt;
  return Earliest({attempt.deadline, ask, heard.silent_at, heard.dry_at, look, StallTime(),
                   heard.NextStandstillCheck(), device_.NextWake(now, Interest()), NextAttempt()});
}

}  // namespace platform::gstreamer
