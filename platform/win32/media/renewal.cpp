#include "platform/win32/media/renewal.h"

#include "platform/win32/base/windows_api.h"

#include <mfapi.h>
#include <mfidl.h>

#include <utility>

#include "platform/win32/media/media_library.h"
#include "platform/win32/media/media_results.h"
#include "platform/win32/media/operation_shapes.h"
#include "platform/win32/media/rebuilt_session.h"
#include "ports/media_interfaces.h"

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

}  // namespace

void Renewal::Forget() {
  opening_.reset();
  phase_ = Phase::kNone;
  began_ = 0;
  position_ = 0;
  has_volume_ = false;
  sound_is_due_ = false;
}

void Renewal::Begin(const std::shared_ptr<SessionWatch>& lost) {
  RememberSound();
  // A session that has ended has no position.
  began_ = position_;
  CloseLost(lost);
  Connect();
}

std::int64_t Renewal::Position(std::int64_t played) {
  position_ = began_ + played;
  return position_;
}

void Renewal::RememberSound() {
  const auto volume = table_.Seen(Interface::kSimpleAudioVolume);
  WINBOOL mute = FALSE;
  has_volume_ = volume && SeenAs<::IMFSimpleAudioVolume>(volume)->GetMasterVolume(&volume_) == S_OK &&
                SeenAs<::IMFSimpleAudioVolume>(volume)->GetMute(&mute) == S_OK;
  mute_ = mute;
}

void Renewal::CloseLost(const std::shared_ptr<SessionWatch>& lost) {
  for (const Interface seen_as : {Interface::kMediaSource, Interface::kMediaSession}) {
    const ComView view{table_.Seen(seen_as), seen_as};
    if (view.object) ShutDownLater(*lost, view);
  }
  if (const auto session = table_.Seen(Interface::kMediaSession)) SeenAs<::IMFMediaSession>(session)->Close();
}

void Renewal::Connect() {
  phase_ = Phase::kConnecting;
  clock_state_ = static_cast<std::int32_t>(ClockState::kRunning);
  opener_.ReadByItself();
}

void Renewal::Park(Phase phase) {
  // Reads that wait end first, for the opening waits for them.
  opener_.EndReads();
  opening_.reset();
  phase_ = phase;
}

std::shared_ptr<SessionWatch> Renewal::Step() {
  if (sound_is_due_) RestoreSound();
  if (phase_ == Phase::kConnecting && opener_.IsText()) {
    opener_.EndReads();
    Fail(kMfENetRead);
  }
  if (phase_ == Phase::kConnecting && opener_.IsDecided()) BeginOpening();
  if (phase_ != Phase::kOpening || !opening_->IsOver()) return nullptr;
  OpenedObject opened = opening_->Take();
  opening_.reset();
  return Play(std::move(opened));
}

void Renewal::BeginOpening() {
  ComPointer<::IMFSourceResolver> resolver;
  const HRESULT made =
      CallMedia<decltype(::MFCreateSourceResolver)>("MFCreateSourceResolver", resolver.Receive());
  if (made != S_OK) return Fail(made);
  opening_.emplace(opener_.BeginOwn(*resolver.Get()));
  phase_ = Phase::kOpening;
}

std::shared_ptr<SessionWatch> Renewal::Play(OpenedObject opened) {
  ComPointer<::IMFMediaSource> source;
  HResult result = opened.result;
  if (result == kSOk) result = opened.object->QueryInterface(__uuidof(::IMFMediaSource), source.ReceiveAny());
  RebuiltSession built;
  if (result == kSOk) {
    built = RebuildSession(*source.Get());
    result = built.result;
  }
  if (result != kSOk) {
    opener_.EndReads();
    if (source) source->Shutdown();
    Fail(result);
    return nullptr;
  }
  auto watch = WatchSession(*built.session.Get());
  PROPVARIANT from_here;
  PropVariantInit(&from_here);
  built.session->Start(&GUID_NULL, &from_here);
  opener_.Playing();
  table_.Replace(Interface::kMediaSource, AsUnknown(source));
  table_.Replace(Interface::kMediaSession, AsUnknown(built.session));
  table_.Replace(Interface::kClock, AsUnknown(built.clock));
  sound_is_due_ = has_volume_;
  phase_ = Phase::kNone;
  return watch;
}

void Renewal::Fail(HResult result) {
  phase_ = Phase::kClosed;
  clock_state_ = static_cast<std::int32_t>(ClockState::kStopped);
  notes_.Broken(notes_.Latest(), result);
}

// The session offers its volume once it has looked at its topology.
void Renewal::RestoreSound() {
  const auto session = table_.Seen(Interface::kMediaSession);
  ComPointer<::IMFSimpleAudioVolume> volume;
  const HRESULT found =
      CallMedia<decltype(::MFGetService)>("MFGetService", session.Get(), MR_POLICY_VOLUME_SERVICE,
                                          __uuidof(::IMFSimpleAudioVolume), volume.ReceiveAny());
  if (found != S_OK) return;
  volume->SetMasterVolume(volume_);
  volume->SetMute(mute_);
  table_.Replace(Interface::kSimpleAudioVolume, AsUnknown(volume));
  sound_is_due_ = false;
}

std::optional<HResult> Renewal::Answer(Interface interface_id, std::int32_t slot,
                                       std::span<const Argument> arguments) {
  const OperationShape* const shape = FindShape(interface_id, slot);
  if (shape == nullptr || !Matches(*shape, arguments)) return std::nullopt;
  if (interface_id == Interface::kSimpleAudioVolume && (IsOn() || sound_is_due_))
    return AnswerVolume(slot, arguments);
  if (!IsOn()) return std::nullopt;
  if (interface_id == Interface::kClock) return AnswerClock(slot, arguments);
  if (interface_id == Interface::kMediaSession) return AnswerSession(slot);
  // It is shut down when the lost session has closed.
  const bool shuts_down =
      interface_id == Interface::kMediaSource && slot == platform::IMFMediaSource::Shutdown.slot;
  return shuts_down ? std::optional(kSOk) : std::nullopt;
}

std::optional<HResult> Renewal::AnswerSession(std::int32_t slot) {
  using namespace platform::IMFMediaSession;
  const auto item = notes_.Latest();
  if (slot == Start.slot) {
    if (phase_ == Phase::kClosed) return kEFail;
    if (phase_ == Phase::kParked) Connect();
    notes_.Started(item);
  } else if (slot == Pause.slot) {
    Park(Phase::kParked);
    clock_state_ = static_cast<std::int32_t>(ClockState::kPaused);
    notes_.Paused(item);
  } else if (slot == Stop.slot || slot == Close.slot) {
    Park(slot == Stop.slot && phase_ != Phase::kClosed ? Phase::kParked : Phase::kClosed);
    clock_state_ = static_cast<std::int32_t>(ClockState::kStopped);
    notes_.Stopped(item);
  } else if (slot != platform::IMFMediaSession::Shutdown.slot) {
    return std::nullopt;
  }
  return kSOk;
}

std::optional<HResult> Renewal::AnswerClock(std::int32_t slot, std::span<const Argument> arguments) {
  if (slot == platform::IMFClock::GetState.slot) return Give(arguments[1], clock_state_);
  if (slot == platform::IMFClock::GetCorrelatedTime.slot) return Give(arguments[1], position_);
  return std::nullopt;
}

std::optional<HResult> Renewal::AnswerVolume(std::int32_t slot, std::span<const Argument> arguments) {
  using namespace platform::IMFSimpleAudioVolume;
  if (slot == SetMasterVolume.slot) volume_ = std::get<float>(arguments[0]);
  if (slot == SetMute.slot) mute_ = std::get<std::int32_t>(arguments[0]);
  if (slot == GetMasterVolume.slot) return Give(arguments[0], volume_);
  if (slot == GetMute.slot) return Give(arguments[0], mute_);
  return kSOk;
}

PlaybackStatus Renewal::Refine(const PlaybackStatus& status) const {
  PlaybackStatus refined = opener_.Refine(status);
  const bool lost = IsOn() && status.state == PlaybackState::kPlaying;
  if (lost) refined.state = PlaybackState::kReconnecting;
  return refined;
}

}  // namespace platform::win32
