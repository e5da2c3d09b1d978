#include "platform/gstreamer/device_probe.h"

#include <utility>

namespace platform::gstreamer {
namespace {

/// Small pieces, so that the device soon asks for more.
constexpr std::int64_t kBufferMicroseconds = 100'000;
constexpr std::int64_t kPieceMicroseconds = 20'000;
constexpr int kPieceSamples = 882;
/// What a device takes at once has been passed to it long before this is over.
constexpr std::int64_t kFilledMicroseconds = 60'000;
/// Rounds to silence, but is not marked as such: a sink would not hand marked silence to its device.
constexpr double kInaudible = 1e-7;

}  // namespace

std::unique_ptr<DeviceProbe> DeviceProbe::Create(ElementPointer sink, PipelineListener& listener,
                                                 int serial) {
  std::unique_ptr<DeviceProbe> probe(new DeviceProbe(listener, serial));
  if (!sink || !probe->Build(std::move(sink))) return nullptr;
  probe->Start();
  return probe;
}

DeviceProbe::DeviceProbe(PipelineListener& listener, int serial) : listener_(listener), serial_(serial) {}

DeviceProbe::~DeviceProbe() {
  if (!pipeline_) return;
  gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
  const BusPointer bus(gst_element_get_bus(pipeline_.get()));
  gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
}

bool DeviceProbe::Build(ElementPointer sink) {
  pipeline_.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
  g_object_set(sink.get(), "buffer-time", kBufferMicroseconds, "latency-time", kPieceMicroseconds, nullptr);
  GstElement* last = sink.get();
  gst_bin_add(GST_BIN(pipeline_.get()), last);
  for (const char* factory : {"audioresample", "audioconvert", "audiotestsrc"}) {
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (element == nullptr) return false;
    gst_bin_add(GST_BIN(pipeline_.get()), element);
    if (!gst_element_link(element, last)) return false;
    last = element;
  }
  g_object_set(last, "volume", kInaudible, "samplesperbuffer", kPieceSamples, nullptr);
  const PadPointer taken(gst_element_get_static_pad(sink.get(), "sink"));
  gst_pad_add_probe(
      taken.get(), GST_PAD_PROBE_TYPE_BUFFER,
      [](GstPad*, GstPadProbeInfo*, gpointer self) { return static_cast<DeviceProbe*>(self)->OnTaken(); },
      this, nullptr);
  return true;
}

void DeviceProbe::Start() {
  const BusPointer bus(gst_element_get_bus(pipeline_.get()));
  gst_bus_set_sync_handler(
      bus.get(),
      [](GstBus*, GstMessage* message, gpointer self) {
        if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
          static_cast<DeviceProbe*>(self)->Report(PipelineEvent::Kind::kFailed);
        }
        gst_message_unref(message);
        return GST_BUS_DROP;
      },
      this, nullptr);
  if (gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
    Report(PipelineEvent::Kind::kFailed);
  }
}

GstPadProbeReturn DeviceProbe::OnTaken() {
  const std::int64_t now = g_get_monotonic_time();
  if (first_taken_ == 0) first_taken_ = now;
  if (now - first_taken_ >= kFilledMicroseconds) Report(PipelineEvent::Kind::kDeviceFound);
  return GST_PAD_PROBE_OK;
}

void DeviceProbe::Report(PipelineEvent::Kind kind) {
  if (!reported_.exchange(true)) listener_.OnPipelineEvent({kind, serial_});
}

}  // namespace platform::gstreamer
