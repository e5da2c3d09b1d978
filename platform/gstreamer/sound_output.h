#pragma once
// Chooses where the sound goes and gives access to the stream's own volume there.
// Not the pipeline in front of it.

#include <gst/gst.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

#include "platform/gstreamer/device_watch.h"
#include "platform/gstreamer/gst_media.h"
#include "platform/gstreamer/gst_pointers.h"

namespace platform::gstreamer {

/// How much sound a device takes before it is heard.
inline constexpr std::chrono::microseconds kDeviceBuffer = std::chrono::milliseconds(400);
/// How much it asks for at a time. GStreamer's own 10 ms would wake two threads a hundred times a second.
inline constexpr std::chrono::microseconds kDeviceRequest = kDeviceBuffer / 4;

/// Makes sinks; safe to use from any thread.
class OutputChooser {
 public:
  explicit OutputChooser(const GstMediaOptions& options);

  struct Output {
    ElementPointer sink;  ///< floating reference taken; null when none may be had
    bool heard = false;   ///< a real device
  };
  enum class Wish : std::uint8_t {
    kDevice,           ///< null without one
    kDeviceOrNowhere,  ///< without one a sink that plays in time without sound
    kNowhere,
  };

  /// A device is the sound server when there is one, else the sound card (CardRule says when). When the sound
  /// is meant to go nowhere, every request gives such a sink.
  Output Choose(Wish wish);
  /// False when the sound is meant to go nowhere.
  [[nodiscard]] bool WantsDevice() const { return output_ == SoundOutput::kAutomatic; }

 private:
  ElementPointer TryDevice(const char* factory);
  Output Device();
  Output Nowhere();

  SoundOutput output_;
  std::string application_name_;
  std::function<void(const std::string&)> log_;
  std::atomic<bool> said_{false};
  std::mutex mutex_;
  CardRule card_rule_;
};

/// For an output that is not used after all: its sink may be connected already.
void Discard(const OutputChooser::Output& output);

/// True when the sink keeps a volume of its own for this stream.
bool HasStreamVolume(GstElement* sink);

}  // namespace platform::gstreamer
