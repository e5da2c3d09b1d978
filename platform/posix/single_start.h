#pragma once
// One start of the program among those that may come at the same time: it runs, or it passes its request to
// the copy that is already running. Not for what that copy does with it (ports/start_requests.h).

#include <chrono>
#include <memory>
#include <string>

#include "platform/posix/start_channel.h"
#include "platform/posix/start_lock.h"

namespace platform::posix {

/// To be created before anything that two running copies must not do, and kept until the process ends.
class SingleStart {
 public:
  enum class Outcome {
    kRuns,        ///< this start is the one that runs
    kHandedOver,  ///< another one runs and has accepted the request
    kUnanswered,  ///< another one runs and did not answer within the limit
  };

  struct Places {
    std::string lock;
    std::string socket;
  };

  /// Settles the outcome. While another start is just beginning or ending this waits, at most for `limit`;
  /// when the other one ends meanwhile, this one takes its place. Where there can be no lock, every start
  /// runs.
  SingleStart(const Places& places, const StartRequest& request, std::chrono::milliseconds limit);

  [[nodiscard]] Outcome Get() const { return outcome_; }
  /// What later starts ask of this one; null unless it runs and can be asked.
  [[nodiscard]] StartRequests* Requests() const { return listener_.get(); }

 private:
  Outcome Settle(const Places& places, const StartRequest& request, std::chrono::milliseconds limit);

  StartLock lock_;
  std::unique_ptr<StartListener> listener_;  // destroyed before the lock
  Outcome outcome_;
};

}  // namespace platform::posix
