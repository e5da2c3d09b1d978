#pragma once
// What the items of one adapter share: where the sound goes, its volume, the limits, the log.
// Not what one item's two threads share; that is item_state.h.

#include <chrono>
#include <functional>
#include <string>

#include "platform/gstreamer/framework.h"
#include "platform/gstreamer/gst_media.h"
#include "platform/gstreamer/pipeline.h"
#include "platform/gstreamer/process_sound.h"
#include "platform/gstreamer/sound_output.h"

namespace platform::gstreamer {

/// Outlives every item's thread.
struct ItemServices {
  explicit ItemServices(const GstMediaOptions& options);
  Framework framework;  ///< every item's thread waits for it before anything else
  OutputChooser output;
  ProcessSound sound;
  PipelineSettings pipeline;
  std::chrono::milliseconds open_deadline;
  std::chrono::milliseconds length_limit;
  std::function<void(const std::string&)> log;
};

}  // namespace platform::gstreamer
