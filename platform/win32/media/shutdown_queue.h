#pragma once
// Shuts sessions and their sources down when these have come to rest. Not their closing
// (media/session_watch.h).

#include <chrono>
#include <memory>
#include <vector>

#include "platform/win32/media/handle_table.h"
#include "platform/win32/media/session_watch.h"

namespace platform::win32 {

/// All members belong to the user-interface thread.
class ShutdownQueue {
 public:
  using Clock = std::chrono::steady_clock;
  /// So long after a session has closed its objects are shut down. In Wine 8.0 a source may still be stopping
  /// when the session reports that it has closed. One that is shut down then forgets it, and is shut down
  /// once more with its last reference, which ends the program.
  static constexpr std::chrono::milliseconds kRest{100};

  /// `session` is about to close, or has closed.
  void Add(const std::shared_ptr<SessionWatch>& session);
  /// The same, and `object`, the session or its source, is to be shut down then: what was added first first.
  void Add(const std::shared_ptr<SessionWatch>& session, const ComView& object);
  /// Shuts down what is at rest.
  void Step(Clock::time_point now);
  /// Waits for the rest of all and shuts them down. False when a session does not close in that time; what is
  /// left then is in use and is never shut down.
  bool Finish(std::chrono::milliseconds limit);

 private:
  struct Closing {
    std::shared_ptr<SessionWatch> session;
    std::vector<ComView> objects;
  };
  Closing& Of(const std::shared_ptr<SessionWatch>& session);

  std::vector<Closing> closing_;
};

}  // namespace platform::win32
