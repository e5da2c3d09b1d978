#pragma once
// Keeps one item playing, on a thread of its own: opens it, pauses a dry buffer, opens a lost stream again.
// Not the caller's side; that is media_item.h.

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/gstreamer/device_search.h"
#include "platform/gstreamer/item_state.h"
#include "platform/gstreamer/line.h"
#include "platform/gstreamer/pipeline.h"
#include "platform/gstreamer/process_sound.h"
#include "platform/gstreamer/reconnect_schedule.h"
#include "platform/gstreamer/sound_output.h"

namespace platform::gstreamer {

/// What the items of one adapter share; outlives every item's thread.
struct ItemServices {
  explicit ItemServices(const GstMediaOptions& options);
  OutputChooser output;
  ProcessSound sound;
  PipelineSettings pipeline;
  std::chrono::milliseconds open_deadline;
  std::function<void(const std::string&)> log;
};

/// Two pipelines at most: the one that is heard, and the one that is being opened. When a live stream
/// breaks, what was buffered is still heard while the next pipeline opens, and then they change places.
/// While no device takes the sound there is none, and a device is looked for as long as the item runs; a file
/// then goes on where it was, a live stream with what is sent by then.
class MediaSupervisor {
 public:
  MediaSupervisor(PipelineInput input, std::shared_ptr<ItemState> state,
                  std::shared_ptr<ItemServices> services);

  /// The thread's function; returns after the request kShutDown.
  void Run();

 private:
  using Clock = ItemState::Clock;

  void OpenNext(OutputChooser::Wish wish);
  void OnEvent(const PipelineEvent& event);
  void OnOpeningEvent(const PipelineEvent& event);
  void OnPlayingEvent(const PipelineEvent& event);
  void LookAtBuffer();
  void OnPrerolled();
  void OnOutputRefused();
  void OnOpenFailed(HResult result, FailureCause cause);
  void OnSilent();
  void OnPlayingFailed(const PipelineEvent& event);
  void OnDuration();
  void OnRequest(Wanted wanted);
  void LoseSource();
  /// What plays has come to its end, or is given up; the device plays what it holds before that.
  void EndOnceHeard();
  void DropPlaying();
  void DropLines();
  /// The device that took the sound takes no more.
  void LoseDevice();
  void Promote();
  void Finish();
  void DropAll();
  void CheckTimers();
  void AdjustPlaying();
  void ApplyVolume();
  void ObserveVolume();
  [[nodiscard]] PlaybackState State() const;
  [[nodiscard]] ItemReport Report() const;
  [[nodiscard]] bool Runs() const { return wanted_ == Wanted::kRunning && !finished_; }
  [[nodiscard]] DeviceSearch::Interest Interest() const;
  [[nodiscard]] bool WantsAttempt() const;
  [[nodiscard]] bool WaitsForBuffer() const;
  [[nodiscard]] bool MayStall() const;
  [[nodiscard]] Clock::time_point StallTime() const;
  [[nodiscard]] std::optional<Clock::time_point> NextWake() const;

  const PipelineInput input_;
  const std::shared_ptr<ItemState> state_;
  const std::shared_ptr<ItemServices> services_;
  Wanted wanted_ = Wanted::kOpened;
  std::uint64_t request_ = 0;
  std::uint64_t volume_version_ = 0;
  bool volume_moved_ = false;
  Line playing_;
  Line opening_;
  int serial_ = 0;
  bool ever_opened_ = false;
  bool live_ = false;
  bool finished_ = false;  ///< played to its end, or could not be opened at all
  FailureCause cause_;     ///< of the failure or the loss; none while all is well
  ReconnectSchedule schedule_;
  DeviceSearch device_;
};

}  // namespace platform::gstreamer
