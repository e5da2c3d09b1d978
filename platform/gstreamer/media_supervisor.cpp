#include "platform/gstreamer/media_supervisor.h"

#include <algorithm>
#include <utility>

#include "platform/gstreamer/results.h"

namespace platform::gstreamer {
namespace {

using std::chrono::seconds;

/// While a sound server that was there restarts, playing on without sound would not come back by itself.
constexpr seconds kWaitForOutput{30};
constexpr std::chrono::microseconds kDeviceBuffer{kDeviceBufferMicroseconds};
/// How long a device is left alone once the buffer behind it is dry: until it asks for more in vain.
constexpr std::chrono::microseconds kPlayedWhenDry = kDeviceBuffer * 3 / 4;
/// While the sound goes on the buffer is only looked at when it runs dry.
constexpr std::chrono::milliseconds kRefillWhilePlaying{100};

}  // namespace

ItemServices::ItemServices(const GstMediaOptions& options)
    : output(options),
      pipeline{options.user_agent, options.certificate_file,
               static_cast<unsigned>(std::max<seconds::rep>(1, options.stall_limit.count()))},
      open_deadline(options.open_deadline),
      stall_limit(std::max(seconds(1), options.stall_limit)),
      log(options.log) {}

MediaSupervisor::MediaSupervisor(PipelineInput input, std::shared_ptr<ItemState> state,
                                 std::shared_ptr<ItemServices> services)
    : input_(std::move(input)), state_(std::move(state)), services_(std::move(services)) {}

void MediaSupervisor::Run() {
  OpenNext();
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

void MediaSupervisor::OpenNext() {
  const auto now = Clock::now();
  schedule_.AttemptStarted(now);
  opening_ = {};
  const bool insist = output_lost_ && now - schedule_.LostAt() < kWaitForOutput;
  auto output =
      services_->output.Choose(insist ? OutputChooser::Silence::kRefused : OutputChooser::Silence::kAllowed);
  opening_.pipeline = Pipeline::Create(input_, services_->pipeline, std::move(output), *state_, ++serial_);
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
  if (opening_.pipeline && event.serial == opening_.pipeline->Serial()) return OnOpeningEvent(event);
  if (playing_.pipeline && event.serial == playing_.pipeline->Serial()) return OnPlayingEvent(event);
}

void MediaSupervisor::OnOpeningEvent(const PipelineEvent& event) {
  using Kind = PipelineEvent::Kind;
  switch (event.kind) {
    case Kind::kPrerolled:
      opening_.prerolled = true;
      return OnOpened();
    case Kind::kBuffering:
      return OnBuffering(opening_);
    case Kind::kSourceEnded:
      opening_.source_gone = true;
      return;
    case Kind::kFailed:
      return OnOpenFailed(event.result, event.cause);
    default:
      return;
  }
}

void MediaSupervisor::OnPlayingEvent(const PipelineEvent& event) {
  using Kind = PipelineEvent::Kind;
  switch (event.kind) {
    case Kind::kBuffering:
      return OnBuffering(playing_);
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

void MediaSupervisor::OnOpened() {
  if (!playing_.pipeline) Promote();
}

void MediaSupervisor::OnSilent() { live_ ? DropPlaying() : Finish(); }

void MediaSupervisor::Promote() {
  playing_ = std::exchange(opening_, {});
  const bool lost_meanwhile = std::exchange(playing_.source_gone, false);
  state_->SetCurrent(playing_.pipeline);
  output_lost_ = false;
  tries_failed_ = false;
  cause_ = {};
  if (!ever_opened_) {
    ever_opened_ = true;
    live_ = !input_.local_file && !input_.reader;
    volume_moved_ = true;
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

void MediaSupervisor::OnBuffering(Line& line) {
  // What was announced may have changed since; the buffer itself decides.
  if (line.filled) {
    if (line.pipeline->IsDry()) OnDry(line);
    return;
  }
  const auto now = Clock::now();
  line.percent = line.reserve.Percent(line.pipeline->Buffered(), now);
  if (line.percent < 100) return;
  line.filled = true;
  line.dry_at.reset();
  line.reserve.Resume(now);
  line.pipeline->SetRefill(kRefillWhilePlaying);
}

void MediaSupervisor::OnDry(Line& line) {
  const auto now = Clock::now();
  line.filled = false;
  line.percent = 0;
  if (line.source_gone) return EndOnceHeard();
  if (line.playing) line.dry_at = now + kPlayedWhenDry;
  line.reserve.RunDry(now);
  line.pipeline->SetRefill(line.reserve.Most());
}

void MediaSupervisor::OnOpenFailed(HResult result, FailureCause cause) {
  if (opening_.pipeline) opening_.pipeline->Stop();
  opening_ = {};
  tries_failed_ = true;
  cause_ = std::move(cause);
  if (!ever_opened_) {
    finished_ = true;
    state_->SetOpened(result, Report());
  } else if (!live_) {
    Finish();
  }
}

void MediaSupervisor::OnPlayingFailed(const PipelineEvent& event) {
  if (!live_) {
    cause_ = event.cause;
    return Finish();
  }
  LoseSource();
  output_lost_ = event.output_failed && playing_.pipeline->Heard();
  if (event.output_failed) return DropPlaying();
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

void MediaSupervisor::DropAll() {
  state_->SetCurrent(nullptr);
  state_->RestartTime();
  if (playing_.pipeline) playing_.pipeline->Stop();
  if (opening_.pipeline) opening_.pipeline->Stop();
  playing_ = {};
  opening_ = {};
  schedule_.Reset();
  output_lost_ = false;
}

void MediaSupervisor::OnRequest(Wanted wanted) {
  wanted_ = wanted;
  switch (wanted) {
    case Wanted::kRunning:
      if (ever_opened_) finished_ = false;
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
  if (playing_.playing && !(playing_.source_gone && tries_failed_)) {
    const bool silent = services_->output.WantsDevice() && !playing_.pipeline->Heard();
    return silent ? PlaybackState::kNoDevice : PlaybackState::kPlaying;
  }
  if (playing_.pipeline && !playing_.source_gone) return PlaybackState::kBuffering;
  if (output_lost_) return PlaybackState::kNoDevice;
  return schedule_.Lost() ? PlaybackState::kReconnecting : PlaybackState::kConnecting;
}

ItemReport MediaSupervisor::Report() const {
  ItemReport report{State(), cause_, playing_.percent, {}};
  if (WantsAttempt()) report.next_try = schedule_.NextAttempt();
  return report;
}

bool MediaSupervisor::WantsAttempt() const {
  const bool idle = !opening_.pipeline && (!playing_.pipeline || playing_.source_gone);
  return wanted_ == Wanted::kRunning && !finished_ && idle;
}

bool MediaSupervisor::MayStall() const {
  return live_ && playing_.pipeline && !playing_.filled && !playing_.source_gone &&
         wanted_ == Wanted::kRunning;
}

MediaSupervisor::Clock::time_point MediaSupervisor::StallTime() const {
  // GLib's monotonic time and steady_clock are the same clock on Linux (CLOCK_MONOTONIC).
  return Clock::time_point(std::chrono::microseconds(playing_.pipeline->LastDataMicroseconds())) +
         services_->stall_limit;
}

std::optional<MediaSupervisor::Clock::time_point> MediaSupervisor::NextWake() const {
  std::optional<Clock::time_point> wake;
  const auto consider = [&wake](Clock::time_point time) { wake = wake ? std::min(*wake, time) : time; };
  if (opening_.pipeline && !opening_.prerolled) consider(opening_.deadline);
  if (playing_.silent_at) consider(*playing_.silent_at);
  if (playing_.dry_at) consider(*playing_.dry_at);
  if (WantsAttempt()) consider(schedule_.NextAttempt());
  if (MayStall()) consider(StallTime());
  return wake;
}

void MediaSupervisor::CheckTimers() {
  const auto now = Clock::now();
  if (opening_.pipeline && !opening_.prerolled && now >= opening_.deadline) {
    OnOpenFailed(kMfENetTimeout, {PlaybackFailure::kNoAnswer});
  }
  if (playing_.silent_at && now >= *playing_.silent_at) OnSilent();
  if (playing_.dry_at && now >= *playing_.dry_at) playing_.dry_at.reset();
  if (MayStall() && now >= StallTime()) {
    LoseSource();
    DropPlaying();
  }
  if (WantsAttempt() && now >= schedule_.NextAttempt()) OpenNext();
}

void MediaSupervisor::AdjustPlaying() {
  if (!playing_.pipeline) return;
  const bool has_sound = playing_.filled || playing_.dry_at || playing_.silent_at;
  const bool play = wanted_ == Wanted::kRunning && has_sound;
  if (play == playing_.playing) return;
  playing_.playing = play;
  if (play && !playing_.played_since) playing_.played_since = Clock::now();
  play ? playing_.pipeline->Play() : playing_.pipeline->Pause();
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
  if (playing_.pipeline) services_->sound.Observe(playing_.pipeline->ReadVolume(), volume_version_);
}

}  // namespace platform::gstreamer
