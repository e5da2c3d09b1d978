#include "platform/gstreamer/failure_notes.h"

#include <gst/pbutils/pbutils.h>

#include <string_view>

#include "platform/gstreamer/missing_decoder.h"
#include "platform/gstreamer/open_error.h"
#include "platform/live/text_types.h"

namespace platform::gstreamer {
namespace {

/// Below it the answer was good, and what failed came after it.
constexpr int kFirstBadStatus = 300;

bool IsRedirect(int status, GstMessage& error_message) {
  if (status / 100 != 3) return false;
  const GstStructure* details = nullptr;
  gst_message_parse_error_details(&error_message, &details);
  const gchar* target = gst_structure_get_string(details, "http-redirect-uri");
  return target != nullptr && g_str_has_prefix(target, "http") != 0;
}

/// The type of a Content-Type header without its parameters, in lower case.
std::string TypeOf(const GstStructure& headers) {
  const GValue* more = gst_structure_get_value(&headers, "response-headers");
  const GstStructure* response = more == nullptr ? nullptr : gst_value_get_structure(more);
  const gchar* value = response == nullptr ? nullptr : gst_structure_get_string(response, "Content-Type");
  if (value == nullptr) return {};
  const GStringPointer lower(g_ascii_strdown(value, -1));
  const std::string_view text = lower.get();
  return std::string(text.substr(0, text.find_first_of("; \t")));
}

FailureCause CauseInFile(const GError& error) {
  if (error.domain != GST_RESOURCE_ERROR) return {PlaybackFailure::kUnreadable};
  const bool missing = error.code == GST_RESOURCE_ERROR_NOT_FOUND;
  return {missing ? PlaybackFailure::kNotFound : PlaybackFailure::kNoAccess};
}

FailureCause CauseInAnswer(const GError& error) {
  if (error.domain == GST_RESOURCE_ERROR) return {PlaybackFailure::kConnectionLost};
  if (error.domain != GST_STREAM_ERROR) return {PlaybackFailure::kOther};
  // The source's own last word after a failed read.
  if (error.code == GST_STREAM_ERROR_FAILED) return {PlaybackFailure::kConnectionLost};
  return {PlaybackFailure::kUnreadable};
}

bool SaysText(const GError& error) {
  return error.domain == GST_STREAM_ERROR && error.code == GST_STREAM_ERROR_WRONG_TYPE;
}

bool SaysMissing(const GError& error) {
  if (error.domain == GST_CORE_ERROR) return error.code == GST_CORE_ERROR_MISSING_PLUGIN;
  return error.domain == GST_STREAM_ERROR && error.code == GST_STREAM_ERROR_CODEC_NOT_FOUND;
}

}  // namespace

void FailureNotes::Hear(GstMessage& element_message) {
  const GstStructure* structure = gst_message_get_structure(&element_message);
  const std::lock_guard lock(mutex_);
  if (gst_structure_has_name(structure, "http-headers")) return HearHeaders(*structure);
  if (gst_is_missing_plugin_message(&element_message) == 0) return;
  const GValue* detail = gst_structure_get_value(structure, "detail");
  if (missing_ || detail == nullptr || !GST_VALUE_HOLDS_CAPS(detail)) return;
  missing_.reset(gst_caps_ref(const_cast<GstCaps*>(gst_value_get_caps(detail))));
}

void FailureNotes::HearHeaders(const GstStructure& headers) {
  guint status = 0;
  gst_structure_get_uint(&headers, "http-status-code", &status);
  const gchar* target = gst_structure_get_string(&headers, "redirection-uri");
  redirect_target_ = target == nullptr ? "" : target;
  if (status == 0) return;
  answered_ = true;
  text_ = live::IsTextType(TypeOf(headers));
}

std::optional<FailureCause> FailureNotes::Explain(GstMessage& error_message, Source source) const {
  const std::lock_guard lock(mutex_);
  GError* raw = nullptr;
  gst_message_parse_error(&error_message, &raw, nullptr);
  const GErrorPointer error(raw);
  if (const int status = HttpStatusOf(&error_message); status >= kFirstBadStatus) {
    if (IsRedirect(status, error_message)) return FailureCause{PlaybackFailure::kTooManyRedirects};
    return FailureCause{PlaybackFailure::kHttpStatus, status};
  }
  if (missing_ && SaysMissing(*error)) return CauseOfMissingDecoder(*missing_);
  if (SaysText(*error)) return FailureCause{PlaybackFailure::kWebPage};
  if (source == Source::kLocal) return CauseInFile(*error);
  if (!answered_) return std::nullopt;
  const FailureCause cause = CauseInAnswer(*error);
  return text_ && cause.failure == PlaybackFailure::kUnreadable ? FailureCause{PlaybackFailure::kWebPage}
                                                                : cause;
}

FailureCause FailureNotes::NoSound() const {
  const std::lock_guard lock(mutex_);
  return missing_ ? CauseOfMissingDecoder(*missing_) : FailureCause{PlaybackFailure::kUnreadable};
}

std::string FailureNotes::RedirectTarget() const {
  const std::lock_guard lock(mutex_);
  return redirect_target_;
}

}  // namespace platform::gstreamer
