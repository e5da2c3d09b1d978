#pragma once
// Port: what later starts of the program ask of the copy that is already running: that its window come to the
// front. Not for deciding which start may run.

#include <functional>
#include <optional>
#include <string>

namespace platform {

/// One later start, which waits for the answer before it ends.
struct StartRequest {
  std::string activation_token;  ///< by which the desktop lets a window take the keyboard; may be empty
  std::string argument;          ///< what was to be opened, in the system's own bytes; empty for nothing
};

class StartRequests {
 public:
  virtual ~StartRequests() = default;

  /// A descriptor that is readable whenever Next has something to do; -1 when there is none: nobody can ask,
  /// or requests come with the messages of the event loop.
  [[nodiscard]] virtual int Descriptor() const = 0;

  /// To be set where there is no descriptor: called on the user-interface thread, inside the processing of
  /// messages, whenever Next has something to do. The request must be answered before it returns.
  std::function<void()> Arrived;

  /// The next request; nothing when none is pending. Never waits. A request that was not accepted before the
  /// next call counts as refused: the later start then waits until this copy has ended, to take its place.
  virtual std::optional<StartRequest> Next() = 0;

  /// Accepts the request that Next gave last, whose start then ends.
  virtual void Accept() = 0;
};

}  // namespace platform
