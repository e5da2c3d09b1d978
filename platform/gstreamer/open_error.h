#pragma once
// Turns what GStreamer says about a failed item into the media framework's results.
// Not the decision what to do about it.

#include <gst/gst.h>

#include "ports/interface_call.h"

namespace platform::gstreamer {

/// The result for an error message: file not found for a missing file and the HTTP status 404, unsupported
/// for what is not decodable sound, access denied for 401 and 403, a timeout, and kEFail for the rest.
HResult ResultOfError(GstMessage* error_message, bool local_file);

/// The HTTP status in an error message; 0 when there is none.
int HttpStatusOf(GstMessage* error_message);

}  // namespace platform::gstreamer
