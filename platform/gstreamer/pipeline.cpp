#include "platform/gstreamer/pipeline.h"

#include <gst/audio/audio.h>

#include <algorithm>
#include <utility>

namespace platform::gstreamer {
namespace {

/// The buffer's size: so much decoded sound, or so many bytes of it.
constexpr std::chrono::nanoseconds kBufferTime = std::chrono::seconds(10);
constexpr guint kBufferBytes = 24U << 20U;
/// Below this the buffer counts as dry, because the device has its own 400 ms by then.
constexpr std::chrono::nanoseconds kDry = std::chrono::milliseconds(40);
/// How often a file on a server is asked for its rest after a broken connection.
constexpr int kResumeTries = 3;
constexpr char kGatherer[] = "audiobuffersplit";
/// What the levels are measured in; whatever else a decoder gives is converted.
constexpr char kMeasured[] = "audio/x-raw, layout = interleaved, format = { " GST_AUDIO_NE(
    S16) ", " GST_AUDIO_NE(S32) ", " GST_AUDIO_NE(F32) " }";

bool HasFactory(const char* name) {
  GstElementFactory* factory = gst_element_factory_find(name);
  if (factory == nullptr) return false;
  gst_object_unref(factory);
  return true;
}

double ShareOfBuffer(std::chrono::nanoseconds sound) {
  return static_cast<double>(sound.count()) / static_cast<double>(kBufferTime.count());
}

}  // namespace

std::shared_ptr<Pipeline> Pipeline::Create(const PipelineInput& input, const PipelineSettings& settings,
                                           OutputChooser::Output output, PipelineListener& listener,
                                           int serial) {
  std::shared_ptr<Pipeline> pipeline(new Pipeline(input, settings, listener, serial));
  if (!output.sink || !pipeline->Build(std::move(output))) return nullptr;
  pipeline->ConnectSignals();
  return pipeline;
}

Pipeline::Pipeline(const PipelineInput& input, const PipelineSettings& settings, PipelineListener& listener,
                   int serial)
    : input_(input), settings_(settings), listener_(listener), serial_(serial) {
  last_data_ = std::chrono::steady_clock::now();
  supplied_until_ = std::chrono::steady_clock::now();
}

Pipeline::~Pipeline() {
  if (!pipeline_) return;
  Stop();
  const BusPointer bus(gst_element_get_bus(pipeline_.get()));
  gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
}

bool Pipeline::Build(OutputChooser::Output output) {
  pipeline_.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
  heard_ = output.heard;
  sink_ = output.sink.get();
  gst_bin_add(GST_BIN(pipeline_.get()), sink_);
  const bool own_volume = !HasStreamVolume(sink_);
  std::vector<GstElement*> chain;
  std::vector<const char*> factories = {"queue2", "audioconvert"};
  // Not every installation has it. A decoder's pieces are four times as small as those that a device asks
  // for.
  const bool gathers = HasFactory(kGatherer);
  if (gathers) factories.push_back(kGatherer);
  for (const char* factory : {"capsfilter", "audioconvert", "audioresample"}) factories.push_back(factory);
  if (own_volume) factories.push_back("volume");
  for (const char* factory : factories) {
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (element == nullptr) return false;
    gst_bin_add(GST_BIN(pipeline_.get()), element);
    chain.push_back(element);
  }
  buffer_ = chain[0];
  measured_ = chain[gathers ? 3 : 2];
  if (gathers) gst_util_set_object_arg(G_OBJECT(chain[2]), "output-buffer-duration", "1/10");
  volume_ = own_volume ? chain.back() : sink_;
  chain.push_back(sink_);
  decoder_ = gst_element_factory_make("uridecodebin", nullptr);
  if (decoder_ == nullptr) return false;
  gst_bin_add(GST_BIN(pipeline_.get()), decoder_);
  return LinkChain(chain);
}

bool Pipeline::LinkChain(const std::vector<GstElement*>& chain) {
  for (std::size_t at = 1; at < chain.size(); ++at) {
    if (!gst_element_link(chain[at - 1], chain[at])) return false;
  }
  // Decoded sound is buffered, not bytes: its time is exact whatever the format and the server's burst.
  g_object_set(buffer_, "use-buffering", TRUE, "use-rate-estimate", FALSE, "max-size-buffers", 0U,
               "max-size-bytes", kBufferBytes, "max-size-time", static_cast<guint64>(kBufferTime.count()),
               "low-watermark", ShareOfBuffer(kDry), nullptr);
  const CapsPointer measured(gst_caps_from_string(kMeasured));
  g_object_set(measured_, "caps", measured.get(), nullptr);
  return true;
}

void Pipeline::ConnectSignals() {
  // Raw pointers are safe here: no signal comes once the pipeline has reached its NULL state.
  ConnectDecoder();
  AddProbes();
  g_signal_connect(volume_, "notify::volume", G_CALLBACK(+[](GObject*, GParamSpec*, gpointer self) {
                     static_cast<Pipeline*>(self)->Notify({PipelineEvent::Kind::kVolumeChanged, 0});
                   }),
                   this);
  const BusPointer bus(gst_element_get_bus(pipeline_.get()));
  gst_bus_set_sync_handler(
      bus.get(),
      [](GstBus*, GstMessage* message, gpointer self) {
        static_cast<Pipeline*>(self)->OnMessage(message);
        gst_message_unref(message);
        return GST_BUS_DROP;
      },
      this, nullptr);
}

void Pipeline::ConnectDecoder() {
  g_signal_connect(decoder_, "pad-added", G_CALLBACK(+[](GstElement*, GstPad* pad, gpointer self) {
                     static_cast<Pipeline*>(self)->OnPadAdded(pad);
                   }),
                   this);
  g_signal_connect(
      decoder_, "no-more-pads",
      G_CALLBACK(+[](GstElement*, gpointer self) { static_cast<Pipeline*>(self)->OnNoMorePads(); }), this);
  g_signal_connect(decoder_, "source-setup", G_CALLBACK(+[](GstElement*, GstElement* source, gpointer self) {
                     static_cast<Pipeline*>(self)->OnSourceSetup(source);
                   }),
                   this);
  g_signal_connect(pipeline_.get(), "deep-element-added",
                   G_CALLBACK(+[](GstBin*, GstBin*, GstElement* element, gpointer self) {
                     static_cast<Pipeline*>(self)->OnElementAdded(element);
                   }),
                   this);
  const CapsPointer sound(gst_caps_new_empty_simple("audio/x-raw"));
  const std::string uri = input_.reader ? "appsrc://" : input_.uri;
  g_object_set(decoder_, "uri", uri.c_str(), "caps", sound.get(), "expose-all-streams", FALSE, nullptr);
}

void Pipeline::AddProbes() {
  const PadPointer input(gst_element_get_static_pad(buffer_, "sink"));
  gst_pad_add_probe(
      input.get(),
      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
      [](GstPad*, GstPadProbeInfo* info, gpointer self) {
        return static_cast<Pipeline*>(self)->OnBufferInput(info);
      },
      this, nullptr);
  const PadPointer measured(gst_element_get_static_pad(measured_, "src"));
  gst_pad_add_probe(
      measured.get(),
      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
      [](GstPad*, GstPadProbeInfo* info, gpointer self) {
        return static_cast<Pipeline*>(self)->OnMeasuredSound(info);
      },
      this, nullptr);
}

void Pipeline::Preroll() {
  if (gst_element_set_state(pipeline_.get(), GST_STATE_PAUSED) != GST_STATE_CHANGE_FAILURE) return;
  PipelineEvent event{PipelineEvent::Kind::kFailed, serial_};
  event.result = kEFail;
  event.cause = {PlaybackFailure::kOther};
  Notify(event);
}

void Pipeline::Play() { gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING); }

void Pipeline::Pause() { gst_element_set_state(pipeline_.get(), GST_STATE_PAUSED); }

void Pipeline::Stop() {
  pacer_.Release();
  gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
  probe_.Cancel();
}

void Pipeline::SetRefill(std::chrono::nanoseconds sound) {
  g_object_set(buffer_, "high-watermark", ShareOfBuffer(sound), nullptr);
}

std::chrono::nanoseconds Pipeline::Buffered() const {
  guint64 time = 0;
  guint bytes = 0;
  g_object_get(buffer_, "current-level-time", &time, "current-level-bytes", &bytes, nullptr);
  if (source_ended_ || bytes >= kBufferBytes / 4 * 3) return kBufferTime;
  return std::min(std::chrono::nanoseconds(static_cast<std::int64_t>(time)), kBufferTime);
}

bool Pipeline::IsDry() const { return Buffered() < kDry; }

void Pipeline::SetVolume(double linear) { g_object_set(volume_, "volume", linear, nullptr); }

void Pipeline::SetMute(bool mute) { g_object_set(volume_, "mute", static_cast<gboolean>(mute), nullptr); }

StreamVolume Pipeline::ReadVolume() const {
  gdouble volume = 1.0;
  gboolean mute = FALSE;
  g_object_get(volume_, "volume", &volume, "mute", &mute, nullptr);
  return {volume, mute != FALSE};
}

PlayingLength Pipeline::Length() const {
  using State = PlayingLength::State;
  // A station may claim a length, which only says how long it would like to be listened to.
  if (station_) return {};
  gint64 length = 0;
  const bool answered = gst_element_query_duration(pipeline_.get(), GST_FORMAT_TIME, &length) != FALSE;
  if (answered && length > 0) return {State::kKnown, length};
  return {has_length_ ? State::kAwaited : State::kNone};
}

void Pipeline::AllowResuming() {
  if (web_source_) g_object_set(web_source_.get(), "retries", kResumeTries, nullptr);
}

void Pipeline::RecalculateLatency() { gst_bin_recalculate_latency(GST_BIN(pipeline_.get())); }

bool Pipeline::IsPlaying() const {
  GstState state = GST_STATE_NULL;
  GstState pending = GST_STATE_VOID_PENDING;
  gst_element_get_state(pipeline_.get(), &state, &pending, 0);
  return state == GST_STATE_PLAYING && (pending == GST_STATE_VOID_PENDING || pending == GST_STATE_PLAYING);
}

bool Pipeline::Seek(std::int64_t position) {
  source_ended_ = false;
  return gst_element_seek_simple(pipeline_.get(), GST_FORMAT_TIME, GST_SEEK_FLAG_FLUSH, position) != FALSE;
}

std::int64_t Pipeline::PlayedTime() const { return std::min(RunningTime(), levels_.End()); }

std::int64_t Pipeline::RunningTime() const {
  const GstClockTime now = IsPlaying() ? gst_element_get_current_running_time(pipeline_.get())
                                       : gst_element_get_start_time(pipeline_.get());
  return now == GST_CLOCK_TIME_NONE ? 0 : static_cast<std::int64_t>(now);
}

std::vector<float> Pipeline::Peaks() const {
  const GstClockTime now =
      IsPlaying() ? gst_element_get_current_running_time(pipeline_.get()) : GST_CLOCK_TIME_NONE;
  if (now == GST_CLOCK_TIME_NONE) return {};
  return levels_.At(static_cast<std::int64_t>(now));
}

}  // namespace platform::gstreamer
