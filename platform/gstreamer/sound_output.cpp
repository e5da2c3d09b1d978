#include "platform/gstreamer/sound_output.h"

#include <gst/audio/streamvolume.h>

#include "platform/gstreamer/gst_pointers.h"
#include "platform/gstreamer/unlocked_start.h"

namespace platform::gstreamer {
namespace {

void SetIfPresent(GstElement* element, const char* property, const std::string& value) {
  GObjectClass* type = G_OBJECT_GET_CLASS(element);
  if (value.empty() || g_object_class_find_property(type, property) == nullptr) return;
  g_object_set(element, property, value.c_str(), nullptr);
}

ElementPointer MakeElement(const char* factory) {
  GstElement* element = gst_element_factory_make(factory, nullptr);
  if (element == nullptr) return nullptr;
  return ElementPointer(GST_ELEMENT(gst_object_ref_sink(element)));
}

}  // namespace

OutputChooser::OutputChooser(const GstMediaOptions& options)
    : output_(options.output), application_name_(options.application_name), log_(options.log) {}

ElementPointer OutputChooser::TryDevice(const char* factory) {
  ElementPointer sink = MakeElement(factory);
  if (!sink) return nullptr;
  // The sound server's stream time keeps running while a stream is paused before its first sound. Whatever is
  // synchronised with it, by the sink's own clock or against the system's, starts later by exactly that pause
  // or stalls. So the sound is passed on as fast as the device takes it, which needs no clock.
  g_object_set(sink.get(), "provide-clock", FALSE, "sync", FALSE, "buffer-time",
               static_cast<gint64>(kDeviceBuffer.count()), "latency-time",
               static_cast<gint64>(kDeviceRequest.count()), nullptr);
  SetIfPresent(sink.get(), "client-name", application_name_);
  if (gst_element_set_state(sink.get(), GST_STATE_READY) == GST_STATE_CHANGE_SUCCESS) return sink;
  gst_element_set_state(sink.get(), GST_STATE_NULL);
  return nullptr;
}

OutputChooser::Output OutputChooser::Choose(Wish wish) {
  if (output_ == SoundOutput::kNowhere) return Nowhere();
  if (wish != Wish::kNowhere) {
    Output device = Device();
    if (device.sink || wish == Wish::kDevice) return device;
  }
  if (!said_.exchange(true)) log_("no device takes the sound: waiting for one");
  return Nowhere();
}

OutputChooser::Output OutputChooser::Device() {
  ElementPointer server = TryDevice("pulsesink");
  bool may_take_card = false;
  {
    const auto now = CardRule::Clock::now();
    const std::lock_guard lock(mutex_);
    server ? card_rule_.ServerAnswered() : card_rule_.ServerMissing(now);
    may_take_card = card_rule_.MayTakeCard(now);
  }
  if (server) {
    StartWithoutLock(server.get());
    return {std::move(server), true};
  }
  if (!may_take_card) return {};
  ElementPointer card = TryDevice("alsasink");
  const bool heard = card != nullptr;
  return {std::move(card), heard};
}

OutputChooser::Output OutputChooser::Nowhere() {
  ElementPointer sink = MakeElement("fakesink");
  if (sink) g_object_set(sink.get(), "sync", TRUE, nullptr);
  return {std::move(sink), false};
}

void Discard(const OutputChooser::Output& output) {
  if (output.sink) gst_element_set_state(output.sink.get(), GST_STATE_NULL);
}

bool HasStreamVolume(GstElement* sink) { return GST_IS_STREAM_VOLUME(sink); }

}  // namespace platform::gstreamer
