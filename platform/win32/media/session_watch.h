#pragma once
// What a media session has reported: that it broke off, ended or closed. Not for controlling it.

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/win32/media/handle_table.h"
#include "ports/interface_call.h"

struct IMFMediaSession;

namespace platform::win32 {

/// All members may be called from any thread.
class SessionWatch {
 public:
  struct News {
    std::optional<HResult> broken;  ///< why it broke off
    bool ended = false;             ///< it has played everything
  };
  /// What has come since the last call.
  News Take();
  /// Runs `then` once the session has closed: at once, or on a thread of the framework. Until then the
  /// session, its source and what is between them are in use. Several run in the order of the calls, one
  /// after the other.
  void WhenClosed(std::function<void()> then);
  /// False when the session does not close in that time, or not everything that waited for it has run.
  bool WaitClosed(std::chrono::milliseconds limit);

  // What the session reports.
  void Broken(HResult result);
  void Ended();
  void Closed();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  News news_;
  bool closed_ = false;  ///< and nothing of `waiting_` is left to do
  std::vector<std::function<void()>> waiting_;
};

/// Shuts `object`, the session or its source, down when the session has closed, for until then it is in use:
/// in Wine shutting it down could end the program. False, and nothing done, when that is the case already.
bool ShutDownLater(SessionWatch& watch, const ComView& object);

/// From now on until the session shuts down.
std::shared_ptr<SessionWatch> WatchSession(::IMFMediaSession& session);

}  // namespace platform::win32
