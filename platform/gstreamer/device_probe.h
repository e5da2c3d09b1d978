#pragma once
// Finds out whether a sink's device takes sound, by playing silence to it.
// Not the choice of the sink, and not when to look; those are sound_output.h and device_watch.h.

#include <gst/gst.h>

#include <atomic>
#include <cstdint>
#include <memory>

#include "platform/gstreamer/gst_pointers.h"
#include "platform/gstreamer/pipeline.h"

namespace platform::gstreamer {

/// Plays silence from its creation to its destruction. Once the device has not only filled its buffer but
/// asks for more, the listener gets kDeviceFound; kFailed when the sink refuses it. A device that is
/// suspended gives neither until it is resumed.
class DeviceProbe {
 public:
  /// Null when an element is missing from the installation. `serial` marks the events.
  static std::unique_ptr<DeviceProbe> Create(ElementPointer sink, PipelineListener& listener, int serial);
  ~DeviceProbe();
  DeviceProbe(const DeviceProbe&) = delete;
  DeviceProbe& operator=(const DeviceProbe&) = delete;

  [[nodiscard]] int Serial() const { return serial_; }

 private:
  DeviceProbe(PipelineListener& listener, int serial);
  bool Build(ElementPointer sink);
  void Start();
  GstPadProbeReturn OnTaken();
  void Report(PipelineEvent::Kind kind);

  PipelineListener& listener_;
  const int serial_;
  ElementPointer pipeline_;
  std::int64_t first_taken_ = 0;  ///< the sink's thread only
  std::atomic<bool> reported_{false};
};

}  // namespace platform::gstreamer
