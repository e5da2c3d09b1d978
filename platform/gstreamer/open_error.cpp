#include "platform/gstreamer/open_error.h"

#include "platform/gstreamer/failure_cause.h"
#include "platform/gstreamer/gst_pointers.h"
#include "platform/gstreamer/results.h"

namespace platform::gstreamer {
namespace {

bool IsUnsupported(const GError& error) {
  if (error.domain == GST_CORE_ERROR) return error.code == GST_CORE_ERROR_MISSING_PLUGIN;
  if (error.domain != GST_STREAM_ERROR) return false;
  switch (error.code) {
    case GST_STREAM_ERROR_TYPE_NOT_FOUND:
    case GST_STREAM_ERROR_WRONG_TYPE:
    case GST_STREAM_ERROR_CODEC_NOT_FOUND:
    case GST_STREAM_ERROR_DECODE:
    case GST_STREAM_ERROR_DEMUX:
    case GST_STREAM_ERROR_FORMAT:
    case GST_STREAM_ERROR_DECRYPT:
    case GST_STREAM_ERROR_DECRYPT_NOKEY:
      return true;
    default:
      return false;
  }
}

}  // namespace

HResult ResultOfError(GstMessage* error_message, bool local_file) {
  GError* raw = nullptr;
  gst_message_parse_error(error_message, &raw, nullptr);
  const GErrorPointer error(raw);
  if (IsUnsupported(*error)) return kMfEUnsupportedByteStreamType;
  if (error->domain != GST_RESOURCE_ERROR) return kEFail;
  if (error->code == GST_RESOURCE_ERROR_NOT_AUTHORIZED) return kEAccessDenied;
  if (error->code != GST_RESOURCE_ERROR_NOT_FOUND) return kEFail;
  // An unknown host is "not found" for GStreamer too, but it is not a missing file.
  return local_file || HttpStatusOf(error_message) == kHttpNotFound ? kErrorFileNotFound : kEFail;
}

int HttpStatusOf(GstMessage* error_message) {
  const GstStructure* details = nullptr;
  gst_message_parse_error_details(error_message, &details);
  guint status = 0;
  if (details != nullptr) gst_structure_get_uint(details, "http-status-code", &status);
  return static_cast<int>(status);
}

}  // namespace platform::gstreamer
