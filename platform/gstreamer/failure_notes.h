#pragma once
// Combines what a pipeline says before and while it fails into the one cause that a user understands.
// Not the media framework's result (open_error.h), and not a look at the network (connection_probe.h).

#include <gst/gst.h>

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "platform/gstreamer/failure_cause.h"
#include "platform/gstreamer/gst_pointers.h"

namespace platform::gstreamer {

/// Safe to use from any thread.
class FailureNotes {
 public:
  enum class Source : std::uint8_t { kLocal, kServer };

  /// Any message of an element; only answers' headers and missing decoders are of interest.
  void Hear(GstMessage& element_message);

  /// The cause behind an error message. Nothing when a server gave no answer at all: GStreamer then does not
  /// say whether it is unknown, silent, refusing or not to be trusted.
  [[nodiscard]] std::optional<FailureCause> Explain(GstMessage& error_message, Source source) const;
  /// The cause when an opened item turns out to hold no sound that can be decoded.
  [[nodiscard]] FailureCause NoSound() const;

  /// Where the item's own address led to in the end; empty without a redirect.
  [[nodiscard]] std::string RedirectTarget() const;

 private:
  void HearHeaders(const GstStructure& headers);

  mutable std::mutex mutex_;
  bool answered_ = false;
  bool text_ = false;
  std::string redirect_target_;
  CapsPointer missing_;
};

}  // namespace platform::gstreamer
