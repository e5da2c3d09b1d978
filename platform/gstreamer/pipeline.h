#pragma once
// One opened item as a GStreamer pipeline: address to sink, with its buffer, level and stream volume.
// Not its supervision: what to do when it runs dry, ends or fails is media_supervisor.h's business.

#include <gst/gst.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/gstreamer/connection_probe.h"
#include "platform/gstreamer/failure_cause.h"
#include "platform/gstreamer/failure_notes.h"
#include "platform/gstreamer/gst_pointers.h"
#include "platform/gstreamer/level_history.h"
#include "platform/gstreamer/peak_meter.h"
#include "platform/gstreamer/sound_output.h"
#include "platform/gstreamer/source_pacer.h"

namespace platform::gstreamer {

/// What a pipeline plays: an address, or a stream object when there is a reader.
struct PipelineInput {
  std::string uri;
  bool local_file = false;
  std::shared_ptr<StreamReader> reader;

  [[nodiscard]] bool FromServer() const { return !local_file && !reader; }
};

struct PipelineSettings {
  std::string user_agent;
  std::string certificate_file;
  std::chrono::seconds stall_limit{15};  ///< a server that sends nothing for this long counts as gone
};

struct PipelineEvent {
  enum class Kind : std::uint8_t {
    kPrerolled,        ///< opened; the first sound is decoded
    kBuffering,        ///< `percent` of what is wanted before the sound continues; ask the buffer for more
    kSourceEnded,      ///< no more data arrives; what is buffered is still to be heard
    kEnded,            ///< the device has everything; its buffer is still to be heard
    kFailed,           ///< `result` and `cause` say why; `output_failed` when the decoder was not to blame
    kDurationChanged,  ///< ask for the duration again
    kVolumeChanged,    ///< somebody moved the stream's volume in the mixer
    kLatencyChanged,
    kDeviceFound,  ///< of a DeviceProbe only
  };
  Kind kind;
  int serial;
  int percent = 0;
  HResult result = kSOk;
  FailureCause cause = {};
  bool output_failed = false;
};

/// Listens to a pipeline; called from any thread, so it should only record the event.
class PipelineListener {
 public:
  virtual ~PipelineListener() = default;
  virtual void OnPipelineEvent(const PipelineEvent& event) = 0;
  virtual void OnTags(const GstTagList& tags) = 0;
};

struct PlayingLength {
  enum class State : std::uint8_t {
    kNone,     ///< a live stream, or not known and not worth waiting for
    kAwaited,  ///< a list of segments has one but cannot say it just now: it changes to another variant
    kKnown,
  };
  State state = State::kNone;
  std::int64_t nanoseconds = 0;
};

struct StreamVolume {
  double volume = 1.0;  ///< linear
  bool mute = false;
};

/// Create, Preroll, then Play and Pause alternately, Stop. These belong to one thread, the supervisor's;
/// functions marked "Any thread" may be called from any.
class Pipeline {
 public:
  /// Null when an element is missing from the installation.
  static std::shared_ptr<Pipeline> Create(const PipelineInput& input, const PipelineSettings& settings,
                                          OutputChooser::Output output, PipelineListener& listener,
                                          int serial);
  ~Pipeline();
  Pipeline(const Pipeline&) = delete;
  Pipeline& operator=(const Pipeline&) = delete;

  [[nodiscard]] int Serial() const { return serial_; }

  /// Before Preroll: when the server gives no answer, a second connection finds out why before kFailed comes.
  void ExplainSilence() { explains_silence_ = true; }
  void Preroll();
  void Play();
  void Pause();
  void Stop();
  /// Continues `position` nanoseconds from the start, once kPrerolled comes again. False when that is not
  /// possible. After kPrerolled, before Play.
  bool Seek(std::int64_t position);

  /// The buffered sound that kBuffering counts as 100 %.
  void SetRefill(std::chrono::nanoseconds sound);
  /// The buffered sound; the whole capacity once nothing more comes or fits.
  [[nodiscard]] std::chrono::nanoseconds Buffered() const;
  /// True when the buffer counts as empty.
  [[nodiscard]] bool IsDry() const;
  void SetVolume(double linear);
  void SetMute(bool mute);
  [[nodiscard]] StreamVolume ReadVolume() const;
  /// After kPrerolled.
  [[nodiscard]] PlayingLength Length() const;
  void RecalculateLatency();
  /// Lets a file on a server, which has a length, continue where its connection broke. After kPrerolled.
  void AllowResuming();

  /// True when the sink is a device that can be heard.
  [[nodiscard]] bool Heard() const { return heard_; }
  /// Any thread: the time played so far in nanoseconds. It stops while paused, and while the device takes no
  /// sound.
  [[nodiscard]] std::int64_t PlayedTime() const;
  /// Any thread: linear peaks of what is heard now, before the volume; empty while paused.
  [[nodiscard]] std::vector<float> Peaks() const;
  /// Any thread: zero when not known yet.
  [[nodiscard]] int Channels() const { return channels_.load(); }
  [[nodiscard]] int SampleRate() const { return sample_rate_.load(); }
  /// Any thread: when the last data arrived in the buffer, the creation at first.
  [[nodiscard]] std::chrono::steady_clock::time_point LastData() const { return last_data_.load(); }
  /// Any thread: when the device has played all the sound that it took, the creation at first. What is taken
  /// later, or a pause, postpones it.
  [[nodiscard]] std::chrono::steady_clock::time_point SuppliedUntil() const { return supplied_until_.load(); }

 private:
  Pipeline(const PipelineInput& input, const PipelineSettings& settings, PipelineListener& listener,
           int serial);
  bool Build(OutputChooser::Output output);
  bool LinkChain(const std::vector<GstElement*>& chain);
  void ConnectSignals();
  void ConnectDecoder();
  void AddProbes();
  void Notify(PipelineEvent event);
  void OnMessage(GstMessage* message);
  void OnError(GstMessage* message);
  void AskWhySilent(const PipelineEvent& event);
  void OnTagMessage(GstMessage* message);
  void OnPadAdded(GstPad* pad);
  void OnNoMorePads();
  void OnElementAdded(GstElement* element);
  void OnSourceSetup(GstElement* source);
  GstPadProbeReturn OnBufferInput(GstPadProbeInfo* info);
  GstPadProbeReturn OnMeasuredSound(GstPadProbeInfo* info);
  void OnFormat(GstEvent* event);
  void Measure(GstBuffer* sound);
  [[nodiscard]] PeakMeter::Report LevelsFrom(std::int64_t now);
  [[nodiscard]] bool IsPlaying() const;
  [[nodiscard]] std::int64_t RunningTime() const;

  PipelineInput input_;
  PipelineSettings settings_;
  PipelineListener& listener_;
  const int serial_;
  ElementPointer pipeline_;
  // Owned by the pipeline.
  GstElement* decoder_ = nullptr;
  GstElement* buffer_ = nullptr;
  GstElement* measured_ = nullptr;  // what passes it is what the levels are measured of
  GstElement* volume_ = nullptr;
  GstElement* sink_ = nullptr;
  ElementPointer web_source_;
  SourcePacer pacer_;
  FailureNotes notes_;
  ConnectionProbe probe_;
  std::atomic<bool> explains_silence_{false};
  bool heard_ = false;
  PeakMeter meter_;
  LevelHistory levels_;
  std::atomic<bool> station_{false};
  std::atomic<bool> has_length_{false};  ///< a list of segments has reported that it is not live
  std::atomic<bool> source_ended_{false};
  std::atomic<int> channels_{0};
  std::atomic<int> sample_rate_{0};
  std::atomic<std::chrono::steady_clock::time_point> last_data_;
  std::atomic<std::chrono::steady_clock::time_point> supplied_until_;
};

}  // namespace platform::gstreamer
