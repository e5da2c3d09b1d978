// The half of Pipeline that its elements call: what they report, and what becomes of it. Building and
// operating them is in pipeline.cpp.

#include <gio/gio.h>
#include <gst/audio/audio.h>

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "platform/gstreamer/ended_answers.h"
#include "platform/gstreamer/open_error.h"
#include "platform/gstreamer/pipeline.h"
#include "platform/gstreamer/reader_source.h"

namespace platform::gstreamer {
namespace {

std::string_view FactoryName(GstElement* element) {
  GstElementFactory* factory = gst_element_get_factory(element);
  return factory == nullptr ? std::string_view() : GST_OBJECT_NAME(factory);
}

/// HLS, DASH and their like.
bool ReadsSegments(GstObject* object) {
  if (!GST_IS_ELEMENT(object)) return false;
  const char* kind = gst_element_get_metadata(GST_ELEMENT(object), GST_ELEMENT_METADATA_KLASS);
  return kind != nullptr && std::string_view(kind).find("Adaptive") != std::string_view::npos;
}

bool IsAudio(GstPad* pad) {
  CapsPointer caps(gst_pad_get_current_caps(pad));
  if (!caps) caps.reset(gst_pad_query_caps(pad, nullptr));
  if (gst_caps_is_empty(caps.get()) || gst_caps_is_any(caps.get())) return false;
  return g_str_has_prefix(gst_structure_get_name(gst_caps_get_structure(caps.get(), 0)), "audio/") != 0;
}

PeakMeter::Sample SampleOf(GstAudioFormat format) {
  if (format == GST_AUDIO_FORMAT_S16) return PeakMeter::Sample::kInt16;
  return format == GST_AUDIO_FORMAT_S32 ? PeakMeter::Sample::kInt32 : PeakMeter::Sample::kFloat32;
}

}  // namespace

void Pipeline::Notify(PipelineEvent event) {
  event.serial = serial_;
  listener_.OnPipelineEvent(event);
}

void Pipeline::OnMessage(GstMessage* message) {
  using Kind = PipelineEvent::Kind;
  switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ERROR:
      return OnError(message);
    case GST_MESSAGE_EOS:
      return Notify({Kind::kEnded, serial_});
    case GST_MESSAGE_ASYNC_DONE:
      if (GST_MESSAGE_SRC(message) == GST_OBJECT(pipeline_.get())) Notify({Kind::kPrerolled, serial_});
      return;
    case GST_MESSAGE_BUFFERING: {
      // The elements inside the decoder report their own buffers too; only the decoded sound counts.
      if (GST_MESSAGE_SRC(message) != GST_OBJECT(buffer_)) return;
      gint percent = 0;
      gst_message_parse_buffering(message, &percent);
      return Notify({Kind::kBuffering, serial_, percent});
    }
    case GST_MESSAGE_DURATION_CHANGED:
      // A list that is not live says so once it was read.
      if (ReadsSegments(GST_MESSAGE_SRC(message))) has_length_ = true;
      return Notify({Kind::kDurationChanged, serial_});
    case GST_MESSAGE_LATENCY:
      return Notify({Kind::kLatencyChanged, serial_});
    case GST_MESSAGE_ELEMENT:
      return notes_.Hear(*message);
    case GST_MESSAGE_TAG:
      return OnTagMessage(message);
    default:
      return;
  }
}

void Pipeline::OnError(GstMessage* message) {
  GstObject* source = GST_MESSAGE_SRC(message);
  PipelineEvent event{PipelineEvent::Kind::kFailed, serial_};
  event.result = ResultOfError(message, input_.local_file);
  // A sink that no device answers for refuses the sound, and then what pushes it there is the first to
  // complain.
  event.output_failed = source != nullptr && source != GST_OBJECT(pipeline_.get()) &&
                        gst_object_has_as_ancestor(source, GST_OBJECT(decoder_)) == 0;
  if (event.output_failed) {
    event.cause = {PlaybackFailure::kNoSoundDevice};
    return Notify(event);
  }
  const auto where = input_.FromServer() ? FailureNotes::Source::kServer : FailureNotes::Source::kLocal;
  const auto cause = notes_.Explain(*message, where);
  if (!cause && explains_silence_) return AskWhySilent(event);
  event.cause = cause.value_or(FailureCause{PlaybackFailure::kConnectionLost});
  Notify(event);
}

void Pipeline::AskWhySilent(const PipelineEvent& event) {
  const std::string target = notes_.RedirectTarget();
  probe_.Start({target.empty() ? input_.uri : target, settings_.certificate_file},
               [this, event](PlaybackFailure failure) {
                 PipelineEvent explained = event;
                 explained.cause = {failure};
                 Notify(explained);
               });
}

void Pipeline::OnTagMessage(GstMessage* message) {
  GstTagList* raw = nullptr;
  gst_message_parse_tag(message, &raw);
  const TagListPointer tags(raw);
  listener_.OnTags(*tags);
}

void Pipeline::OnPadAdded(GstPad* pad) {
  // The next part of a chained stream comes as a new pad, after the old one has gone. A further audio stream
  // in addition to the first stays unconnected.
  const PadPointer input(gst_element_get_static_pad(buffer_, "sink"));
  if (gst_pad_is_linked(input.get()) || !IsAudio(pad)) return;
  gst_pad_link(pad, input.get());
}

void Pipeline::OnNoMorePads() {
  const PadPointer input(gst_element_get_static_pad(buffer_, "sink"));
  if (gst_pad_is_linked(input.get())) return;
  PipelineEvent event{PipelineEvent::Kind::kFailed, serial_};
  event.result = kMfEUnsupportedByteStreamType;
  event.cause = notes_.NoSound();
  Notify(event);
}

void Pipeline::OnElementAdded(GstElement* element) {
  const std::string_view factory = FactoryName(element);
  if (factory == "icydemux") station_ = true;
  // The decoder's own buffer is empty most of the time; it would report each byte that comes and goes.
  if (factory == "queue2" && element != buffer_) g_object_set(element, "use-buffering", FALSE, nullptr);
  if (factory != "souphttpsrc") return;
  AllowClosingEndedAnswers();
  // Asking again for the rest of a live stream is of no use: the supervisor reopens it.
  if (GST_OBJECT_PARENT(element) == GST_OBJECT(decoder_)) {
    g_object_set(element, "retries", 0, nullptr);
    web_source_.reset(GST_ELEMENT(gst_object_ref(element)));
    pacer_.Attach(element, [this] { return Buffered(); });
  }
  g_object_set(element, "user-agent", settings_.user_agent.c_str(), "timeout",
               static_cast<guint>(settings_.stall_limit.count()), nullptr);
  if (settings_.certificate_file.empty()) return;
  GTlsDatabase* trusted = g_tls_file_database_new(settings_.certificate_file.c_str(), nullptr);
  if (trusted == nullptr) return;
  g_object_set(element, "tls-database", trusted, nullptr);
  g_object_unref(trusted);
}

void Pipeline::OnSourceSetup(GstElement* source) {
  if (input_.reader) FeedFromReader(source, input_.reader);
}

GstPadProbeReturn Pipeline::OnBufferInput(GstPadProbeInfo* info) {
  if ((GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) != 0) {
    last_data_ = std::chrono::steady_clock::now();
  } else if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_EOS) {
    source_ended_ = true;
    Notify({PipelineEvent::Kind::kSourceEnded, serial_});
  }
  return GST_PAD_PROBE_OK;
}

GstPadProbeReturn Pipeline::OnMeasuredSound(GstPadProbeInfo* info) {
  if ((GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) != 0) {
    Measure(GST_PAD_PROBE_INFO_BUFFER(info));
    return GST_PAD_PROBE_OK;
  }
  GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
  const GstEventType type = GST_EVENT_TYPE(event);
  if (type != GST_EVENT_CAPS && type != GST_EVENT_EOS) return GST_PAD_PROBE_OK;
  meter_.Finish(LevelsFrom(RunningTime()));
  if (type == GST_EVENT_CAPS) OnFormat(event);
  return GST_PAD_PROBE_OK;
}

PeakMeter::Report Pipeline::LevelsFrom(std::int64_t now) {
  return [this, now](std::int64_t duration, std::vector<float> peaks) {
    levels_.Add(now, duration, std::move(peaks));
  };
}

void Pipeline::OnFormat(GstEvent* event) {
  GstCaps* caps = nullptr;
  gst_event_parse_caps(event, &caps);
  GstAudioInfo format;
  if (!gst_audio_info_from_caps(&format, caps)) return;
  channels_ = GST_AUDIO_INFO_CHANNELS(&format);
  sample_rate_ = GST_AUDIO_INFO_RATE(&format);
  meter_.SetFormat({SampleOf(GST_AUDIO_INFO_FORMAT(&format)),
                    static_cast<std::size_t>(GST_AUDIO_INFO_CHANNELS(&format)),
                    static_cast<std::size_t>(GST_AUDIO_INFO_RATE(&format))});
}

void Pipeline::Measure(GstBuffer* sound) {
  GstMapInfo map;
  if (!gst_buffer_map(sound, &map, GST_MAP_READ)) return;
  const std::int64_t now = RunningTime();
  const auto heard = std::as_bytes(std::span(map.data, map.size));
  if (GST_BUFFER_FLAG_IS_SET(sound, GST_BUFFER_FLAG_GAP)) {
    // Played as silence, whatever is in it.
    meter_.Measure(std::vector<std::byte>(heard.size()), LevelsFrom(now));
  } else {
    meter_.Measure(heard, LevelsFrom(now));
  }
  gst_buffer_unmap(sound, &map);
  const std::chrono::nanoseconds held(std::max<std::int64_t>(0, levels_.End() - now));
  supplied_until_ = std::chrono::steady_clock::now() + held;
}

}  // namespace platform::gstreamer
