#include "platform/win32/media/playback_notes.h"

#include "platform/win32/media/locks.h"
#include "platform/win32/media/media_results.h"

namespace platform::win32 {

PlaybackNotes::Item PlaybackNotes::Open() {
  const Lock lock(mutex_);
  note_ = {.state = PlaybackState::kConnecting};
  return ++latest_;
}

void PlaybackNotes::OpeningFailed(Item item, HResult result) { OpeningFailed(item, FailureOf(result), 0); }

void PlaybackNotes::OpeningFailed(Item item, PlaybackFailure failure, int http_status, const Text& format) {
  Change(item, {PlaybackState::kFailed, failure, http_status, format});
}

void PlaybackNotes::Started(Item item) { Change(item, {.state = PlaybackState::kPlaying}); }
void PlaybackNotes::Paused(Item item) { Change(item, {.state = PlaybackState::kPaused}); }
void PlaybackNotes::Stopped(Item item) { Change(item, {.state = PlaybackState::kStopped}); }
void PlaybackNotes::Ended(Item item) { Change(item, {.state = PlaybackState::kEnded}); }

void PlaybackNotes::Broken(Item item, HResult result) {
  Change(item, {.state = PlaybackState::kFailed, .failure = FailureOf(result)});
}

PlaybackNotes::Item PlaybackNotes::Latest() const {
  const Lock lock(mutex_);
  return latest_;
}

PlaybackStatus PlaybackNotes::Status() const {
  const Lock lock(mutex_);
  PlaybackStatus status;
  status.state = note_.state;
  status.failure = note_.failure;
  status.http_status = note_.http_status;
  status.format = note_.format;
  return status;
}

// What failed stays failed until the next opening.
void PlaybackNotes::Change(Item item, const Note& note) {
  const Lock lock(mutex_);
  if (item == latest_ && note_.state != PlaybackState::kFailed) note_ = note;
}

PlaybackFailure FailureOf(HResult result) {
  switch (result) {
    case kErrorFileNotFound:
      return PlaybackFailure::kNotFound;
    case kEAccessDenied:
      return PlaybackFailure::kNoAccess;
    case kEInvalidArg:
    case kMfEUnsupportedScheme:
      return PlaybackFailure::kBadAddress;
    case kMfENetTimeout:
      return PlaybackFailure::kNoAnswer;
    case kInternetNameNotResolved:
      return PlaybackFailure::kUnknownHost;
    // The data is neither damaged nor silent, but not for everybody.
    case kMfETopologyNoDecryptor:
      return PlaybackFailure::kOther;
    default:
      break;
  }
  if (IsDeviceFailure(result)) return PlaybackFailure::kNoSoundDevice;
  if (IsDecoderFailure(result) || IsDataFailure(result)) return PlaybackFailure::kUnreadable;
  return IsNetworkFailure(result) ? PlaybackFailure::kConnectionLost : PlaybackFailure::kOther;
}

}  // namespace platform::win32
