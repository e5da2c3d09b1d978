#pragma once
// The state of playing of the item that was opened last, as the adapter's events tell it. Not the events'
// source, nor a stream's own state (media/live_stream.h).

#include <mutex>

#include "ports/interface_call.h"
#include "ports/playback_monitor.h"
#include "ports/text.h"

namespace platform::win32 {

/// May be called from any thread. Events of items before the latest are ignored: each names its item by the
/// number that `Open` gave it.
class PlaybackNotes {
 public:
  using Item = int;

  /// A new item is being opened.
  Item Open();
  /// The caller gave the opening up.
  void GivenUp(Item item) { Change(item, {PlaybackState::kStopped}); }
  void OpeningFailed(Item item, HResult result);
  void OpeningFailed(Item item, PlaybackFailure failure, int http_status, const Text& format = {});
  void Started(Item item);
  void Paused(Item item);
  void Stopped(Item item);
  void Ended(Item item);
  /// The session broke off with that result.
  void Broken(Item item, HResult result);

  [[nodiscard]] Item Latest() const;
  [[nodiscard]] PlaybackStatus Status() const;

 private:
  struct Note {
    PlaybackState state = PlaybackState::kStopped;
    PlaybackFailure failure = PlaybackFailure::kNone;
    int http_status = 0;
    Text format = {};
  };
  void Change(Item item, const Note& note);

  mutable std::mutex mutex_;
  Item latest_ = 0;
  Note note_;
};

/// Why an opening failed, as far as its result says.
PlaybackFailure FailureOf(HResult result);

}  // namespace platform::win32
