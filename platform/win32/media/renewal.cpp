#include "platform/win32/media/renewal.h"

#include "platform/win32/base/windows_api.h"

#include <mfapi.h>
#include <mfidl.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "platform/win32/media/media_library.h"
#include "platform/win32/media/media_results.h"
#include "platform/win32/media/operation_shapes.h"
#include "platform/win32/media/rebuilt_session.h"

namespace platform::win32 {
namespace {

template <typename Wanted>
Wanted* SeenAs(const ComPointer<::IUnknown>& object) {
  return static_cast<Wanted*>(object.Get());
}

template <typename Made>
ComPointer<::IUnknown> AsUnknown(const ComPointer<Made>& object) {
  object->AddRef();
  return ComPointer<::IUnknown>(object.Get());
}

template <typename Value>
HResult Give(const Argument& variable, Value value) {
  if (auto* const out = std::get<Value*>(variable); out != nullptr) *out = value;
  return kSOk;
}

std::string Hexadecimal(HResult result) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(result));
  return text;
}

}  // namespace

void Renewal::Forget() {
  // The opening waits for reads.
  if (IsOn()) opener_.EndReads();
  opening_.reset();
  phase_ = Phase::kNone;
  began_ = 0;
  SetPosition(0);
  sound_is_due_ = false;
  volume_.reset();
  mute_.reset();
  device_wait_ = {};
}

void Renewal::Begin(const std::shared_ptr<SessionWatch>& lost, PlaybackState state, Loss loss) {
  options_.log(loss == Loss::kDevice
                   ? "A station has lost its sound device."
                   : "The system has lost a station, which is read by the program from now on.");
  loss_ = loss;
  if (loss == Loss::kDevice) device_wait_.Lost(Clock::now());
  // What the system has read may have been a list all along.
  const bool read_well = loss == Loss::kDevice && opener_.IsLiveOfTheSystem();
  list_means_ = read_well ? kMfEAudioPlaybackDeviceInvalidated : kMfENetRead;
  RememberSound();
  sound_is_due_ = false;
  CloseLost(lost);
  if (state == PlaybackState::kPaused) return Park(Phase::kParked, ClockState::kPaused);
  if (state != PlaybackState::kPlaying) return Park(Phase::kParked, ClockState::kStopped);
  Continue();
}

void Renewal::Continue() { loss_ == Loss::kDevice ? AwaitDevice() : ConnectAnew(); }

void Renewal::AwaitDevice() {
  phase_ = Phase::kNoDevice;
  // It was about another time.
  device_search_.Forget();
  clock_state_ = ClockState::kRunning;
  since_.Run(Clock::now());
}

void Renewal::LookForDevice() {
  const std::optional<bool> found = device_search_.Take();
  if (!found && device_wait_.IsDue(Clock::now())) device_search_.Begin();
  if (!found) return;
  if (!*found) return device_wait_.FoundNone(Clock::now());
  if (!device_wait_.Found(Clock::now())) return;
  options_.log("There is a sound device again.");
  ConnectAnew();
}

void Renewal::ConnectAnew() {
  refusals_ = 0;
  schedule_.Reset();
  schedule_.Lose(Clock::now(), std::nullopt);
  Connect();
}

void Renewal::StartFailed(const std::shared_ptr<SessionWatch>& started, HResult result) {
  sound_is_due_ = false;
  CloseLost(started);
  Refused(result);
}

std::int64_t Renewal::PositionNow() const {
  using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
  return position_ + std::chrono::duration_cast<Ticks>(since_.At(Clock::now())).count();
}

void Renewal::SetPosition(std::int64_t position) {
  position_ = position;
  since_ = {};
}

std::int64_t Renewal::Position(std::int64_t played, Session session) {
  const std::int64_t position = began_ + played;
  SetPosition(session == Session::kMayBeLost ? std::max(position, position_) : position);
  return position_;
}

void Renewal::RememberSound() {
  const auto seen = table_.Seen(Interface::kSimpleAudioVolume);
  if (!seen || sound_is_due_) return;
  float volume = 1;
  WINBOOL mute = FALSE;
  // A session that is lost may not know; then the values that were set last hold.
  if (SeenAs<::IMFSimpleAudioVolume>(seen)->GetMasterVolume(&volume) == S_OK) volume_ = volume;
  if (SeenAs<::IMFSimpleAudioVolume>(seen)->GetMute(&mute) == S_OK) mute_ = mute;
}

void Renewal::CloseLost(const std::shared_ptr<SessionWatch>& lost) {
  for (const Interface seen_as : {Interface::kMediaSource, Interface::kMediaSession}) {
    const ComView view{table_.Seen(seen_as), seen_as};
    if (view.object) shutdowns_.Add(lost, view);
  }
  if (const auto session = table_.Seen(Interface::kMediaSession)) SeenAs<::IMFMediaSession>(session)->Close();
  shutdowns_.Add(lost, opener_.LeaveReads());
}

void Renewal::Connect() {
  phase_ = Phase::kConnecting;
  clock_state_ = ClockState::kRunning;
  since_.Run(Clock::now());
  schedule_.AttemptStarted(Clock::now());
  opener_.ReadByItself();
}

void Renewal::Park(Phase phase, ClockState state) {
  // Reads that wait end first, for the opening waits for them.
  opener_.EndReads();
  opening_.reset();
  phase_ = phase;
  clock_state_ = state;
  since_.Rest(Clock::now());
  if (state == ClockState::kStopped) SetPosition(0);
}

std::shared_ptr<SessionWatch> Renewal::Step() {
  if (sound_is_due_) RestoreSound();
  if (phase_ == Phase::kStarting) LookAtClock();
  if (phase_ == Phase::kNoDevice) LookForDevice();
  if (phase_ == Phase::kWaiting && Clock::now() >= schedule_.NextAttempt()) Connect();
  if (phase_ == Phase::kConnecting) LookAtConnection();
  return phase_ == Phase::kOpening ? EndOpening() : nullptr;
}

void Renewal::LookAtConnection() {
  if (opener_.IsDecided()) return BeginOpening();
  if (!opener_.IsText()) return;
  // A page may be that of a network that wants a login. It is no beginning for the sound that follows it, so
  // that gets a reader of its own.
  const bool list = opener_.IsList();
  opener_.EndReads();
  if (list) return Fail(list_means_);
  WaitForNext(PlaybackFailure::kWebPage);
}

void Renewal::BeginOpening() {
  ComPointer<::IMFSourceResolver> resolver;
  const HRESULT made =
      CallMedia<decltype(::MFCreateSourceResolver)>("MFCreateSourceResolver", resolver.Receive());
  if (made != S_OK) return Refused(made);
  opening_.emplace(opener_.BeginOwn(*resolver.Get()));
  opening_ends_ = Clock::now() + options_.deadline;
  phase_ = Phase::kOpening;
  options_.log("The lost station is being opened.");
}

std::shared_ptr<SessionWatch> Renewal::EndOpening() {
  if (opening_->IsOver()) {
    OpenedObject opened = opening_->Take();
    opening_.reset();
    return Play(std::move(opened));
  }
  if (Clock::now() >= opening_ends_) Refused(kMfENetTimeout);
  return nullptr;
}

std::shared_ptr<SessionWatch> Renewal::Play(OpenedObject opened) {
  ComPointer<::IMFMediaSource> source;
  HResult result = ResultOfData(opened.result);
  if (result == kSOk) result = opened.object->QueryInterface(__uuidof(::IMFMediaSource), source.ReceiveAny());
  RebuiltSession built;
  if (result == kSOk) {
    built = RebuildSession(*source.Get());
    result = built.result;
  }
  std::shared_ptr<SessionWatch> watch;
  if (result == kSOk) {
    watch = WatchSession(*built.session.Get());
    device_wait_.Started(Clock::now());
    PROPVARIANT from_here;
    PropVariantInit(&from_here);
    result = built.session->Start(&GUID_NULL, &from_here);
    if (result != kSOk) built.session->Shutdown();
  }
  if (result != kSOk) {
    opener_.EndReads();
    if (source) source->Shutdown();
    Refused(result);
    return nullptr;
  }
  opener_.Playing();
  sound_is_due_ = static_cast<bool>(table_.Seen(Interface::kSimpleAudioVolume));
  table_.Replace(Interface::kMediaSource, AsUnknown(source));
  table_.Replace(Interface::kMediaSession, AsUnknown(built.session));
  table_.Replace(Interface::kClock, AsUnknown(built.clock));
  phase_ = Phase::kStarting;
  start_ends_ = Clock::now() + options_.deadline;
  options_.log("The lost station is opened and starts.");
  return watch;
}

// A station that answers data which is no sound is left alone in the end; the network may return at any time,
// and so may a device.
void Renewal::Refused(HResult result) {
  opener_.EndReads();
  opening_.reset();
  if (IsDeviceFailure(result)) {
    loss_ = Loss::kDevice;
    device_wait_.Lost(Clock::now());
    return AwaitDevice();
  }
  if (!IsNetworkFailure(result) && ++refusals_ >= kMostRefusals) return Fail(result);
  WaitForNext(FailureOf(result));
}

void Renewal::WaitForNext(PlaybackFailure failure) {
  phase_ = Phase::kWaiting;
  failure_ = failure;
  schedule_.AttemptFailed(Clock::now(), live::ReconnectSchedule::Weigh(failure));
  options_.log("The lost station was not opened; it is asked again.");
}

void Renewal::Fail(HResult result) {
  phase_ = Phase::kClosed;
  clock_state_ = ClockState::kStopped;
  SetPosition(0);
  notes_.Broken(notes_.Latest(), result);
  options_.log("The lost station is given up: " + Hexadecimal(result));
}

void Renewal::LookAtClock() {
  const auto clock = table_.Seen(Interface::kClock);
  MFCLOCK_STATE state = MFCLOCK_STATE_RUNNING;
  LONGLONG played = 0;
  MFTIME now = 0;
  if (clock && SeenAs<::IMFClock>(clock)->GetState(0, &state) != S_OK) return;
  if (state != MFCLOCK_STATE_RUNNING) return;
  if (clock && SeenAs<::IMFClock>(clock)->GetCorrelatedTime(0, &played, &now) != S_OK) return;
  SetPosition(PositionNow());
  began_ = position_ - played;
  phase_ = Phase::kNone;
}

// The session offers its volume once it has looked at its topology.
void Renewal::RestoreSound() {
  const auto session = table_.Seen(Interface::kMediaSession);
  if (!session) return;
  ComPointer<::IMFSimpleAudioVolume> volume;
  const HRESULT found =
      CallMedia<decltype(::MFGetService)>("MFGetService", session.Get(), MR_POLICY_VOLUME_SERVICE,
                                          __uuidof(::IMFSimpleAudioVolume), volume.ReceiveAny());
  if (found != S_OK) return;
  if (volume_) volume->SetMasterVolume(*volume_);
  if (mute_) volume->SetMute(*mute_);
  table_.Replace(Interface::kSimpleAudioVolume, AsUnknown(volume));
  sound_is_due_ = false;
}

std::optional<HResult> Renewal::Answer(Interface interface_id, std::int32_t slot,
                                       std::span<const Argument> arguments) {
  const OperationShape* const shape = FindShape(interface_id, slot);
  if (shape == nullptr || !Matches(*shape, arguments)) return std::nullopt;
  if (interface_id == Interface::kSimpleAudioVolume) return AnswerVolume(slot, arguments);
  if (interface_id == Interface::kMediaSession && (!IsOn() || IsStarting())) {
    PassToSession(slot);
    return std::nullopt;
  }
  if (!IsOn()) return std::nullopt;
  if (interface_id == Interface::kClock) return AnswerClock(slot, arguments);
  if (interface_id == Interface::kMediaSession) return AnswerSession(slot);
  // It is shut down when the lost session has closed.
  const bool shuts_down = !IsStarting() && interface_id == Interface::kMediaSource &&
                          slot == platform::IMFMediaSource::Shutdown.slot;
  return shuts_down ? std::optional(kSOk) : std::nullopt;
}

// The session that plays, or starts, obeys by itself.
void Renewal::PassToSession(std::int32_t slot) {
  using namespace platform::IMFMediaSession;
  const bool ends = slot == Stop.slot || slot == Close.slot || slot == Shutdown.slot;
  if (!ends && slot != Pause.slot) return;
  if (IsStarting()) {
    SetPosition(PositionNow());
    began_ = position_;
    phase_ = Phase::kNone;
  }
  if (!ends) return;
  began_ = 0;
  SetPosition(0);
  if (slot != Stop.slot) sound_is_due_ = false;
}

std::optional<HResult> Renewal::AnswerSession(std::int32_t slot) {
  using namespace platform::IMFMediaSession;
  const auto item = notes_.Latest();
  const bool closed = phase_ == Phase::kClosed;
  if (slot == Start.slot) {
    if (closed) return kEFail;
    if (phase_ == Phase::kParked) {
      device_wait_ = {};
      Continue();
    }
    notes_.Started(item);
  } else if (slot == Pause.slot) {
    if (closed) return kEFail;
    if (clock_state_ == ClockState::kStopped) return kSOk;
    Park(Phase::kParked, ClockState::kPaused);
    notes_.Paused(item);
  } else if (slot == Stop.slot || slot == Close.slot) {
    Park(slot == Stop.slot && !closed ? Phase::kParked : Phase::kClosed, ClockState::kStopped);
    notes_.Stopped(item);
  } else if (slot == platform::IMFMediaSession::Shutdown.slot) {
    Forget();
  } else {
    return std::nullopt;
  }
  return kSOk;
}

std::optional<HResult> Renewal::AnswerClock(std::int32_t slot, std::span<const Argument> arguments) {
  if (slot == platform::IMFClock::GetState.slot)
    return Give(arguments[1], static_cast<std::int32_t>(clock_state_));
  if (slot == platform::IMFClock::GetCorrelatedTime.slot) return Give(arguments[1], PositionNow());
  return std::nullopt;
}

std::optional<HResult> Renewal::AnswerVolume(std::int32_t slot, std::span<const Argument> arguments) {
  using namespace platform::IMFSimpleAudioVolume;
  if (slot == SetMasterVolume.slot) volume_ = std::get<float>(arguments[0]);
  if (slot == SetMute.slot) mute_ = std::get<std::int32_t>(arguments[0]);
  if (!IsOn() && !sound_is_due_) return std::nullopt;
  if (slot == GetMasterVolume.slot) return Give(arguments[0], volume_.value_or(1.0F));
  if (slot == GetMute.slot) return Give(arguments[0], mute_.value_or(0));
  return kSOk;
}

PlaybackStatus Renewal::Refine(const PlaybackStatus& status) const {
  const bool lost = IsOn() && status.state == PlaybackState::kPlaying;
  if (!lost) return opener_.Refine(status);
  PlaybackStatus refined = status;
  if (phase_ == Phase::kNoDevice) {
    refined.state = PlaybackState::kNoDevice;
    return refined;
  }
  if (phase_ == Phase::kWaiting) {
    const auto left = std::chrono::ceil<std::chrono::seconds>(schedule_.NextAttempt() - Clock::now());
    refined.failure = failure_;
    refined.seconds_to_next_try = static_cast<int>(std::max<std::chrono::seconds::rep>(left.count(), 0));
  } else {
    refined = opener_.Refine(status);
  }
  refined.state = PlaybackState::kReconnecting;
  return refined;
}

}  // namespace platform::win32
