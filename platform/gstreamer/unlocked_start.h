#pragma once
// Lets a sink start its device without holding its own lock.
// Not the choice of the sink (platform/gstreamer/sound_output.h).

#include <gst/gst.h>

namespace platform::gstreamer {

/// GStreamer 1.22 starts a device under the sink's object lock when a pipeline begins to play. If the sound
/// server has just died, the PulseAudio sink reports that at once, which needs the same lock: the thread
/// waits for itself, and it holds the lock of the library's connection, so that no stream of this process
/// ever sounds again. Starting asks the server for something only because of
/// `GstAudioBaseSink::eos_rendering`, which this hides from a start under the lock; the first sound that is
/// written asks the same without the lock.
///
/// To be called for a sink that is READY, because it has its ring buffer from then on. Applies to all sinks
/// of its kind; repeating it does no harm. Other kinds of sinks stay as they are.
void StartWithoutLock(GstElement* pulse_sink);

}  // namespace platform::gstreamer
