#pragma once
// Keeps one item playing, on a thread of its own: opens it, pauses a dry buffer, opens a lost stream again.
// Not the caller's side; that is media_item.h.

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/gstreamer/item_state.h"
#include "platform/gstreamer/pipeline.h"
#include "platform/gstreamer/process_sound.h"
#include "platform/gstreamer/reconnect_schedule.h"
#include "platform/gstreamer/reserve.h"
#include "platform/gstreamer/sound_output.h"

namespace platform::gstreamer {

/// What the items of one adapter share; outlives every item's thread.
struct ItemServices {
  explicit ItemServices(const GstMediaOptions& options);
  OutputChooser output;
  ProcessSound sound;
  PipelineSettings pipeline;
  std::chrono::milliseconds open_deadline;
  std::chrono::seconds stall_limit;
  std::function<void(const std::string&)> log;
};

/// Two pipelines at most: the one that is heard, and the one that is being opened. When a live stream
/// breaks, what was buffered is still heard while the next pipeline opens, and then they change places.
class MediaSupervisor {
 public:
  MediaSupervisor(PipelineInput input, std::shared_ptr<ItemState> state,
                  std::shared_ptr<ItemServices> services);

  /// The thread's function; returns after the request kShutDown.
  void Run();

 private:
  using Clock = ItemState::Clock;

  /// A pipeline and what is known of it.
  struct Line {
    std::shared_ptr<Pipeline> pipeline;
    bool prerolled = false;
    bool filled = false;       ///< enough is buffered
    int percent = 0;           ///< buffered of what is wanted before the sound
    bool source_gone = false;  ///< only what is buffered is left
    bool playing = false;
    Clock::time_point deadline{};                   ///< of opening
    std::optional<Clock::time_point> played_since;  ///< when it was first heard
    std::optional<Clock::time_point> silent_at;     ///< when the end has been heard, once it is near
    std::optional<Clock::time_point> dry_at;        ///< when the device is as good as dry, once the buffer is
    Reserve reserve;
  };

  void OpenNext();
  void OnEvent(const PipelineEvent& event);
  void OnOpeningEvent(const PipelineEvent& event);
  void OnPlayingEvent(const PipelineEvent& event);
  void OnOpened();
  void OnBuffering(Line& line);
  void OnDry(Line& line);
  void OnOpenFailed(HResult result, FailureCause cause);
  void OnSilent();
  void OnPlayingFailed(const PipelineEvent& event);
  void OnDuration();
  void OnRequest(Wanted wanted);
  void LoseSource();
  /// What plays has come to its end, or is given up; the device plays what it holds before that.
  void EndOnceHeard();
  void DropPlaying();
  void Promote();
  void Finish();
  void DropAll();
  void CheckTimers();
  void AdjustPlaying();
  void ApplyVolume();
  void ObserveVolume();
  [[nodiscard]] PlaybackState State() const;
  [[nodiscard]] ItemReport Report() const;
  [[nodiscard]] bool WantsAttempt() const;
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
  bool finished_ = false;      ///< played to its end, or could not be opened at all
  bool output_lost_ = false;   ///< the last loss was the sound server's
  bool tries_failed_ = false;  ///< since the last loss an attempt has failed
  FailureCause cause_;         ///< of the failure or the loss; none while all is well
  ReconnectSchedule schedule_;
};

}  // namespace platform::gstreamer
