#include "platform/gstreamer/source_pacer.h"

#include <utility>

#include "platform/gstreamer/gst_pointers.h"

namespace platform::gstreamer {

void SourcePacer::Attach(GstElement* source, Buffered buffered) {
  const PadPointer output(gst_element_get_static_pad(source, "src"));
  if (!output) return;
  buffered_ = std::move(buffered);
  gst_pad_add_probe(
      output.get(), GST_PAD_PROBE_TYPE_BUFFER,
      [](GstPad*, GstPadProbeInfo*, gpointer self) { return static_cast<SourcePacer*>(self)->OnPiece(); },
      this, nullptr);
}

GstPadProbeReturn SourcePacer::OnPiece() {
  const auto pause = gathering_.Arrived(Gathering::Clock::now(), buffered_());
  if (pause > pause.zero()) {
    std::unique_lock lock(mutex_);
    released_changed_.wait_for(lock, pause, [this] { return released_; });
  }
  gathering_.Asked(Gathering::Clock::now());
  return GST_PAD_PROBE_OK;
}

void SourcePacer::Release() {
  {
    const std::lock_guard lock(mutex_);
    released_ = true;
  }
  released_changed_.notify_all();
}

}  // namespace platform::gstreamer
