#include "platform/gstreamer/unlocked_start.h"

#include <gst/audio/gstaudiobasesink.h>

#include <atomic>

namespace platform::gstreamer {
namespace {

using Start = gboolean (*)(GstAudioRingBuffer*);

/// The sink's own function. One for the process, because a class of ring buffers has one.
std::atomic<Start> own_start{nullptr};

/// Others hold the lock for moments only, so whoever holds it for longer is this thread.
bool IsLockedHere(GstAudioBaseSink* sink) {
  constexpr int kTries = 20;
  constexpr gulong kMicroseconds = 500;
  for (int tries = 0; tries < kTries; ++tries) {
    if (g_mutex_trylock(GST_OBJECT_GET_LOCK(sink))) {
      GST_OBJECT_UNLOCK(sink);
      return false;
    }
    g_usleep(kMicroseconds);
  }
  return true;
}

gboolean StartQuietly(GstAudioRingBuffer* buffer) {
  GstObject* const owner = GST_OBJECT_PARENT(buffer);
  if (!GST_IS_AUDIO_BASE_SINK(owner)) return own_start.load()(buffer);
  auto* const sink = GST_AUDIO_BASE_SINK(owner);
  if (!IsLockedHere(sink)) return own_start.load()(buffer);
  const gint rendering = g_atomic_int_get(&sink->eos_rendering);
  g_atomic_int_set(&sink->eos_rendering, 0);
  const gboolean started = own_start.load()(buffer);
  g_atomic_int_set(&sink->eos_rendering, rendering);
  return started;
}

}  // namespace

void StartWithoutLock(GstElement* pulse_sink) {
  if (!GST_IS_AUDIO_BASE_SINK(pulse_sink)) return;
  GstAudioRingBuffer* const buffer = GST_AUDIO_BASE_SINK(pulse_sink)->ringbuffer;
  if (buffer == nullptr) return;
  GstAudioRingBufferClass* const kind = GST_AUDIO_RING_BUFFER_GET_CLASS(buffer);
  Start none = nullptr;
  if (own_start.compare_exchange_strong(none, kind->start)) kind->start = StartQuietly;
}

}  // namespace platform::gstreamer
