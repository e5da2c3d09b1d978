#pragma once
// Port: what later starts of the program ask of the copy that is already running: that its window come to the
// front. Not for deciding which start may run.

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

  /// A descriptor that is readable whenever Next has something to do; -1 when nobody can ask.
  [[nodiscard]] virtual int Descriptor() const = 0;

  /// The next request; nothing when none is pending. Never waits. A request that was not accepted before the
  /// next call counts as refused: the later start then waits until this copy has ended, to take its place.
  virtual std::optional<StartRequest> Next() = 0;

  /// Accepts the request that Next gave last, whose start then ends.
  virtual void Accept() = 0;
};

}  // namespace platform
