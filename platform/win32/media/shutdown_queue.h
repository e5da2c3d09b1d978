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
  /// The pause between the report that a session has closed and the shutdown of its objects. In Wine 8.0 a
  /// source may still be stopping at that report. If it is shut down then, it forgets that it was, and its
  /// last reference shuts it down a second time, which ends the program.
  static constexpr std::chrono::milliseconds kRest{100};

  /// `session` is about to close, or has closed.
  void Add(const std::shared_ptr<SessionWatch>& session);
  /// The same, and `object`, the session or its source, is to be shut down then: what was added first first.
  void Add(const std::shared_ptr<SessionWatch>& session, const ComView& object);
  /// Shuts down what is at rest.
  void Step(Clock::time_point now);
  /// Waits until all have come to rest and shuts them down. False when a session does not close in that time:
  /// it is in use, and is never shut down; the others are.
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
