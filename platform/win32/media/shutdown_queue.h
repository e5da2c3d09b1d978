#pragma once
// Shuts sessions and their sources down when these have come to rest. Not their closing
// (media/session_watch.h).

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "platform/win32/media/handle_table.h"
#include "platform/win32/media/session_watch.h"

namespace platform::win32 {

/// All members belong to the user-interface thread. A session is shut down before its source, because its
/// renderer may ask the source for sound until then.
class ShutdownQueue {
 public:
  using Clock = std::chrono::steady_clock;
  /// The pause between the report that a session has closed and its shutdown, and that of its source. In Wine
  /// 8.0 a source may still be stopping at that report. If it is shut down then, it forgets that it was, and
  /// its last reference shuts it down a second time, which ends the program. It also waits for ever, or ends
  /// the program, when it is shut down while it is asked for sound.
  static constexpr std::chrono::milliseconds kRest{100};
  /// A source whose reads wait for a server does not stop, so its session does not close. Then they end.
  static constexpr std::chrono::milliseconds kReadsEnd{500};

  /// `session` is about to close, or has closed.
  void Add(const std::shared_ptr<SessionWatch>& session);
  /// The same, and `object`, the session or its source, is to be shut down then.
  void Add(const std::shared_ptr<SessionWatch>& session, const ComView& object);
  /// The same, and `end_reads`, which may be empty, ends the reads of its source, once: when the session has
  /// closed, or has not in kReadsEnd. In Wine 8.0 a session whose sound ends while it starts or stops and is
  /// to close next may not report that it has closed, or do so too early.
  void Add(const std::shared_ptr<SessionWatch>& session, std::function<void()> end_reads);
  /// Does what is due.
  void Step(Clock::time_point now);
  /// Waits until all have come to rest and shuts them down. False when a session does not close in that time:
  /// it is in use, and is never shut down; the others are.
  bool Finish(std::chrono::milliseconds limit);

 private:
  struct Closing {
    std::shared_ptr<SessionWatch> session;
    Clock::time_point added;
    std::vector<ComView> sessions = {};
    std::vector<ComView> sources = {};
    std::function<void()> end_reads = nullptr;
    Clock::time_point rests_from = {};  ///< when something was done to it last
  };
  Closing& Of(const std::shared_ptr<SessionWatch>& session);
  void EndReads(Clock::time_point now);
  std::vector<ComView> TakeSessions(Clock::time_point now);
  std::vector<ComView> TakeSources(Clock::time_point now);

  std::vector<Closing> closing_;
};

}  // namespace platform::win32
