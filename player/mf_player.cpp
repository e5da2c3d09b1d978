// The player's life: start and end of the framework, opening and closing an item, playing it.
#include "player/mf_player.h"

#include <utility>

#include "player/media_ids.h"
#include "ports/media_interfaces.h"

namespace player {

namespace {

// The framework is started with exactly these two values: version 1, everything.
constexpr std::int32_t kStartupVersion = 1;
constexpr std::int32_t kStartupFull = 0;

}  // namespace

// What the owners of a player share. Its running calls own the player alone, so they outlive the ownership
// and find that it has ended.
struct clsMFPlayer::Ownership {
  explicit Ownership(std::shared_ptr<clsMFPlayer> owned) : player(std::move(owned)) {}
  ~Ownership() { player->owned_.End(); }
  Ownership(const Ownership&) = delete;
  Ownership& operator=(const Ownership&) = delete;

  const std::shared_ptr<clsMFPlayer> player;
};

std::shared_ptr<clsMFPlayer> clsMFPlayer::Make(const Ports& ports, ProgramDuration& duration) {
  const auto ownership = std::make_shared<Ownership>(std::make_shared<clsMFPlayer>(ports, duration));
  return {ownership, ownership->player.get()};
}

clsMFPlayer::clsMFPlayer(const Ports& ports, ProgramDuration& duration)
    : ports_(ports), duration_(duration), caller_(ports.calls, ports.values) {
  started_ = IsOk(ports_.framework.MFStartup(kStartupVersion, kStartupFull));
}

clsMFPlayer::~clsMFPlayer() {
  if (!started_) return;
  FreeMedia();
  ReleaseWhatStayed();
  ports_.framework.MFShutdown();
}

// A handler may replace itself while it runs, so a copy is called.
void clsMFPlayer::RaiseMediaFileIsReady(bool IsReady) {
  const auto handler = MediaFileIsReady;
  if (handler) handler(IsReady);
}

void clsMFPlayer::RaiseIsCreateOK(std::int32_t lngIsOk) {
  const auto handler = IsCreateOK;
  if (handler) handler(lngIsOk);
}

void clsMFPlayer::VideoRenderHwnd(platform::WindowHandle window) {
  if (window != platform::WindowHandle::kNone) video_window_ = window;
}

bool clsMFPlayer::IsMediaReady() const { return static_cast<bool>(session_); }

clsMFPlayer::OwnCall clsMFPlayer::BeginOpening() {
  opening_cancelled_ = false;
  return {weak_from_this().lock(), openings_.Begin()};
}

bool clsMFPlayer::ClosePrevious(const OwnCall& call) {
  RaiseMediaFileIsReady(false);
  if (!call.opening.Wanted()) return false;
  duration_.value = 0;
  FreeMedia();
  return true;
}

void clsMFPlayer::MediaFileFromUrl(Text address) {
  const OwnCall call = BeginOpening();
  if (!ClosePrevious(call)) return;
  if (!CreateSourceFromUrl(address, call)) return;
  if (!BuildSession(source_.Get())) return;
  RaiseMediaFileIsReady(false);
}

void clsMFPlayer::MediaFileFromIStream(platform::StreamObject stream) {
  const OwnCall call = BeginOpening();
  if (!ClosePrevious(call)) return;
  if (!CreateSourceFromStream(stream)) return;
  if (!BuildSession(source_.Get())) return;
  RaiseMediaFileIsReady(true);
}

bool clsMFPlayer::CreateSourceFromUrl(const Text& address, const OwnCall& call) {
  InterfaceRef resolver(caller_);
  if (!IsOk(ports_.framework.MFCreateSourceResolver(resolver.Receive()))) return false;
  InterfaceRef object(caller_);
  std::int32_t object_type = platform::kMfObjectInvalid;
  const CallResult result = caller_.CallInterface(
      resolver.Get(), platform::IMFSourceResolver::CreateObjectFromURL, &address,
      platform::kMfResolutionMediaSource, InterfaceHandle::kNone, &object_type, &object.Receive());
  const HResult code = result.value_or(platform::kSOk);
  const bool reported = code == platform::kSOk || code == platform::kErrorFileNotFound ||
                        code == platform::kMfEUnsupportedByteStreamType;
  opening_cancelled_ = code == platform::kErrorCancelled;
  if (reported) RaiseIsCreateOK(code);
  if (code != platform::kSOk || !call.opening.Wanted()) return false;
  return KeepSource(object_type, object);
}

bool clsMFPlayer::CreateSourceFromStream(platform::StreamObject stream) {
  InterfaceRef resolver(caller_);
  if (!IsOk(ports_.framework.MFCreateSourceResolver(resolver.Receive()))) return false;
  InterfaceRef byte_stream(caller_);
  if (!IsOk(ports_.framework.MFCreateMFByteStreamOnStream(stream, byte_stream.Receive()))) return false;
  InterfaceRef object(caller_);
  std::int32_t object_type = platform::kMfObjectInvalid;
  const CallResult result = caller_.CallInterface(
      resolver.Get(), platform::IMFSourceResolver::CreateObjectFromByteStream, byte_stream.Get(), nullptr,
      platform::kMfResolutionMediaSource + platform::kMfResolutionContentNeedNotMatch, InterfaceHandle::kNone,
      &object_type, &object.Receive());
  return IsOk(result) && KeepSource(object_type, object);
}

bool clsMFPlayer::KeepSource(std::int32_t object_type, const InterfaceRef& object) {
  if (object_type != platform::kMfObjectMediaSource) return false;
  const Guid iid = caller_.GuidFromString(media_ids::kIMFMediaSource);
  InterfaceRef source(caller_);
  const CallResult result =
      caller_.CallInterface(object.Get(), platform::IUnknown::QueryInterface, &iid, &source.Receive());
  if (!IsOk(result)) return false;
  source_ = std::move(source);
  return true;
}

bool clsMFPlayer::PlayMedia() {
  if (!session_) return false;
  const Guid time_format = caller_.GuidFromString(media_ids::kZero);
  platform::PropertyValue current_position;
  return IsOk(caller_.CallInterface(session_.Get(), platform::IMFMediaSession::Start, &time_format,
                                    &current_position));
}

bool clsMFPlayer::PauseMedia() {
  caller_.CallInterface(session_.Get(), platform::IMFMediaSession::Pause);
  return false;
}

bool clsMFPlayer::StopMedia() {
  caller_.CallInterface(session_.Get(), platform::IMFMediaSession::Stop);
  return false;
}

std::int32_t clsMFPlayer::PlayState() {
  std::int32_t state = kPlayStateInvalid;
  const CallResult result =
      caller_.CallInterface(clock_.Get(), platform::IMFClock::GetState, std::int32_t{0}, &state);
  return IsOk(result) ? state : kPlayStateInvalid;
}

// The order matters to the framework: the session is stopped before its source shuts down, and shuts down
// itself when no part of it is in use any more. Results of stopping and closing do not matter, and nobody
// waits for the close to complete. Absent objects are skipped.
void clsMFPlayer::FreeMedia() {
  caller_.CallInterface(session_.Get(), platform::IMFMediaSession::Stop);
  caller_.CallInterface(session_.Get(), platform::IMFMediaSession::Close);
  if (IsOk(caller_.CallInterface(source_.Get(), platform::IMFMediaSource::Shutdown))) source_.Release();
  simple_volume_.Release();
  clock_.Release();
  presentation_descriptor_.Release();
  metadata_.Release();
  audio_meter_.Release();
  if (IsOk(caller_.CallInterface(session_.Get(), platform::IMFMediaSession::Shutdown))) session_.Release();
  caller_.ReleaseLeftBehind();
}

// A source or session that refused to shut down was kept for another try; now there is none.
void clsMFPlayer::ReleaseWhatStayed() {
  for (InterfaceRef* field : {&source_, &simple_volume_, &clock_, &presentation_descriptor_, &metadata_,
                              &audio_meter_, &session_}) {
    field->Release();
  }
}

}  // namespace player
