#include "platform/win32/media/playback_notes.h"

#include "platform/win32/media/media_results.h"

namespace platform::win32 {

PlaybackNotes::Item PlaybackNotes::Open() {
  const std::lock_guard lock(mutex_);
  note_ = {PlaybackState::kConnecting};
  return ++latest_;
}

void PlaybackNotes::OpeningFailed(Item item, HResult result) { OpeningFailed(item, FailureOf(result), 0); }

void PlaybackNotes::OpeningFailed(Item item, PlaybackFailure failure, int http_status) {
  Change(item, {PlaybackState::kFailed, failure, http_status});
}

void PlaybackNotes::Started(Item item) { Change(item, {PlaybackState::kPlaying}); }
void PlaybackNotes::Paused(Item item) { Change(item, {PlaybackState::kPaused}); }
void PlaybackNotes::Stopped(Item item) { Change(item, {PlaybackState::kStopped}); }
void PlaybackNotes::Ended(Item item) { Change(item, {PlaybackState::kEnded}); }

void PlaybackNotes::Broken(Item item, HResult result) {
  if (result == kMfENoAudioPlaybackDevice || result == kMfEAudioPlaybackDeviceInvalidated) {
    Change(item, {PlaybackState::kNoDevice});
    return;
  }
  Change(item, {PlaybackState::kFailed, FailureOf(result)});
}

PlaybackNotes::Item PlaybackNotes::Latest() const {
  const std::lock_guard lock(mutex_);
  return latest_;
}

PlaybackStatus PlaybackNotes::Status() const {
  const std::lock_guard lock(mutex_);
  PlaybackStatus status;
  status.state = note_.state;
  status.failure = note_.failure;
  status.http_status = note_.http_status;
  return status;
}

// What failed stays failed until the next opening.
void PlaybackNotes::Change(Item item, const Note& note) {
  const std::lock_guard lock(mutex_);
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
    case kMfEUnsupportedByteStreamType:
    case kMfETopologyCodecNotFound:
      return PlaybackFailure::kUnreadable;
    case kMfENetTimeout:
      return PlaybackFailure::kNoAnswer;
    default:
      return PlaybackFailure::kOther;
  }
}

}  // namespace platform::win32
