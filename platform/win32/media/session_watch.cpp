#include "platform/win32/media/session_watch.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

#include <utility>

#include "platform/win32/base/com_pointer.h"
#include "platform/win32/media/async_callback.h"
#include "platform/win32/media/locks.h"
#include "platform/win32/media/media_results.h"

namespace platform::win32 {
namespace {

/// The sound has nowhere to go any more, which the session reports without a failure of its own.
bool EndsItsRenderer(MediaEventType type) {
  switch (type) {
    case MESinkInvalidated:
    case MEAudioSessionDeviceRemoved:
    case MEAudioSessionServerShutdown:
    case MEAudioSessionFormatChanged:
    case MEAudioSessionDisconnected:
    case MEAudioSessionExclusiveModeOverride:
      return true;
    default:
      return false;
  }
}

/// Reports with a result that says whether the session can play. Others have results of their own: of a
/// request that was refused while it plays on, of a component that has recovered, of whoever made the event.
bool SaysWhetherItPlays(MediaEventType type) {
  switch (type) {
    case MEError:
    case MESessionTopologySet:
    case MESessionTopologyStatus:
    case MESessionStarted:
    case MEPolicyError:
      return true;
    default:
      return false;
  }
}

/// Whether the source waits for data from then on; nothing for a report that does not say. A source that is
/// stopped or paused meanwhile need not report that it has the data.
std::optional<bool> WaitsForData(MediaEventType type) {
  switch (type) {
    case MEBufferingStarted:
      return true;
    case MEBufferingStopped:
    case MESessionStarted:
    case MESessionPaused:
    case MESessionStopped:
      return false;
    default:
      return std::nullopt;
  }
}

void Note(::IMFMediaEvent& event, SessionWatch& watch) {
  MediaEventType type = MEUnknown;
  HRESULT status = S_OK;
  if (event.GetType(&type) != S_OK || event.GetStatus(&status) != S_OK) return;
  if (FAILED(status) && SaysWhetherItPlays(type)) {
    watch.Broken(status);
  } else if (EndsItsRenderer(type)) {
    watch.Broken(kMfEAudioPlaybackDeviceInvalidated);
  } else if (type == MESessionEnded) {
    watch.Ended();
  }
  if (const auto waits = WaitsForData(type)) watch.Buffering(*waits);
  if (type == MESessionClosed) watch.Closed();
}

/// The session keeps alive what asks for its next event.
void AskForEvent(const ComPointer<::IMFMediaSession>& session, const std::shared_ptr<SessionWatch>& watch) {
  const auto asking = MakeAsyncCallback([session, watch](::IMFAsyncResult& asked) {
    ComPointer<::IMFMediaEvent> event;
    if (session->EndGetEvent(&asked, event.Receive()) != S_OK) return;
    Note(*event.Get(), *watch);
    AskForEvent(session, watch);
  });
  session->BeginGetEvent(asking.Get(), nullptr);
}

}  // namespace

SessionWatch::News SessionWatch::Take() {
  const Lock lock(mutex_);
  return std::exchange(news_, {});
}

std::optional<SessionWatch::Clock::time_point> SessionWatch::ClosedAt() const {
  const Lock lock(mutex_);
  return closed_at_;
}

bool SessionWatch::WaitClosed(std::chrono::milliseconds limit) {
  Lock lock(mutex_);
  return changed_.wait_for(lock, limit, [this] { return closed_at_.has_value(); });
}

void SessionWatch::Broken(HResult result) {
  const Lock lock(mutex_);
  const bool tells_more = news_.broken && IsDeviceFailure(result) && !IsDeviceFailure(*news_.broken);
  if (!news_.broken || tells_more) news_.broken = result;
}

void SessionWatch::Buffering(bool waits) {
  const Lock lock(mutex_);
  buffering_ = waits;
}

bool SessionWatch::IsBuffering() const {
  const Lock lock(mutex_);
  return buffering_;
}

void SessionWatch::Ended() {
  const Lock lock(mutex_);
  news_.ended = true;
}

void SessionWatch::Closed() {
  {
    const Lock lock(mutex_);
    if (!closed_at_) closed_at_ = Clock::now();
  }
  changed_.notify_all();
}

std::shared_ptr<SessionWatch> WatchSession(::IMFMediaSession& session) {
  auto watch = std::make_shared<SessionWatch>();
  session.AddRef();
  AskForEvent(ComPointer<::IMFMediaSession>(&session), watch);
  return watch;
}

}  // namespace platform::win32
