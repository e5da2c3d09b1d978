#pragma once
// Names a format that the installation cannot decode, and the Debian package that could.
// Not detecting it; GStreamer says what is missing.

#include <gst/gst.h>

#include "platform/gstreamer/failure_cause.h"

namespace platform::gstreamer {

/// What a missing decoder for `caps` means: text and web pages are not sound at all, pictures contain none;
/// for everything else a decoder is missing, with the format's name and, where it is known, the package.
FailureCause CauseOfMissingDecoder(const GstCaps& caps);

}  // namespace platform::gstreamer
