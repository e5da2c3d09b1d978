#pragma once
// What a media session has reported: that it broke off, ended or closed. Not for controlling it.

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

#include "ports/interface_call.h"

struct IMFMediaSession;

namespace platform::win32 {

/// All members may be called from any thread.
class SessionWatch {
 public:
  using Clock = std::chrono::steady_clock;
  struct News {
    std::optional<HResult> broken;  ///< why it broke off: a failure that ends playing
    bool ended = false;             ///< it has played everything
  };
  /// What has come since the last call.
  News Take();
  /// The source has said that it waits for data, and nothing since then.
  [[nodiscard]] bool IsBuffering() const;
  /// When it closed, if it has. Until then the session, its source and what is between them are in use.
  [[nodiscard]] std::optional<Clock::time_point> ClosedAt() const;
  /// False when it does not close in that time.
  bool WaitClosed(std::chrono::milliseconds limit);

  // What the session reports. The first failure is the cause, but a lost device before any other: a renderer
  // that ends may report something general first.
  void Broken(HResult result);
  void Ended();
  void Closed();
  void Buffering(bool waits);

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  News news_;
  std::optional<Clock::time_point> closed_at_;
  bool buffering_ = false;
};

/// From now on until the session shuts down.
std::shared_ptr<SessionWatch> WatchSession(::IMFMediaSession& session);

}  // namespace platform::win32
