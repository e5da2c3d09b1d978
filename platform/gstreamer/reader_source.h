#pragma once
// Feeds a pipeline's source element from a stream object.
// Not the registration of stream objects; that is gst_media.h.

#include <gst/gst.h>

#include <memory>

#include "platform/gstreamer/gst_media.h"

namespace platform::gstreamer {

/// `source` is an appsrc; it keeps the reader alive as long as it lives.
void FeedFromReader(GstElement* source, std::shared_ptr<StreamReader> reader);

}  // namespace platform::gstreamer
