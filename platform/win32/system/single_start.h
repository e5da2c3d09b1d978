#pragma once
// One start of the program among those that may come at the same time: it runs, or it passes its request to
// the copy that is already running. Not for what that copy does with it (ports/start_requests.h).

#include <chrono>
#include <memory>
#include <string>

#include "platform/win32/system/owned_handle.h"
#include "platform/win32/system/start_channel.h"
#include "ports/text.h"

namespace platform::win32 {

/// To be created before anything that two running copies must not do, and kept until the process ends.
class SingleStart {
 public:
  enum class Outcome {
    kRuns,        ///< this start is the one that runs
    kHandedOver,  ///< another one runs and has accepted the request
    kUnanswered,  ///< another one runs and did not answer within the limit
  };

  /// Settles the outcome among the starts with the same `place` (a path, of which the letter case does not
  /// count) in the user's session. While another start is just beginning or ending this waits, at most for
  /// `limit`; when the other one ends meanwhile, this one takes its place.
  SingleStart(const Text& place, const StartRequest& request, std::chrono::milliseconds limit);

  [[nodiscard]] Outcome Get() const { return outcome_; }
  /// What later starts ask of this one; null unless it runs.
  [[nodiscard]] StartRequests* Requests() const { return listener_.get(); }

 private:
  Outcome Settle(const StartRequest& request, std::chrono::milliseconds limit);

  std::wstring name_;
  OwnedHandle right_;                        ///< an object of this name exists as long as its owner's process
  std::unique_ptr<StartListener> listener_;  // destroyed before the right
  Outcome outcome_;
};

}  // namespace platform::win32
