#pragma once
// Listens to a media session's events and notes what they mean for the state of playing. Not for controlling
// it.

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "platform/win32/media/playback_notes.h"

struct IMFMediaSession;

namespace platform::win32 {

/// Whether a session has closed.
class SessionClosing {
 public:
  void Closed();
  /// False when the session does not close in that time.
  bool Wait(std::chrono::milliseconds limit);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool closed_ = false;
};

/// From now on until the session shuts down.
std::shared_ptr<SessionClosing> WatchSession(::IMFMediaSession& session,
                                             const std::shared_ptr<PlaybackNotes>& notes,
                                             PlaybackNotes::Item item);

}  // namespace platform::win32
