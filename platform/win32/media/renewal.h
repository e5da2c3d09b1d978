#pragma once
// Continues a station that the system's own reader, or its device, has lost: with the adapter's reader and a
// session of its own, behind the handles of the old ones. Not the reader's connections (media/live_stream.h).

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "platform/live/reconnect_schedule.h"
#include "platform/win32/media/device_search.h"
#include "platform/win32/media/device_wait.h"
#include "platform/win32/media/handle_table.h"
#include "platform/win32/media/media_opener.h"
#include "platform/win32/media/opening.h"
#include "platform/win32/media/playback_notes.h"
#include "platform/win32/media/played_time.h"
#include "platform/win32/media/session_watch.h"
#include "platform/win32/media/shutdown_queue.h"
#include "ports/interface_call.h"
#include "ports/media_interfaces.h"

namespace platform::win32 {

struct RenewalOptions {
  /// An opening that takes longer is one more failed attempt.
  std::chrono::milliseconds deadline;
  /// Receives a line for each step.
  std::function<void(const std::string&)> log;
  DeviceSearch::Look look_for_device;
};

/// All members belong to the user-interface thread and do not wait. Meanwhile the clock runs for the caller,
/// and Stop, Pause, Start and the volume have the effect that they have on a session that plays.
///
/// A station is asked again and again, as the reader asks one that it has lost itself. It is given up when
/// its address brings a list of segments, or when its data was refused several times. Without a device it is
/// not connected until there is one.
class Renewal {
 public:
  using Clock = std::chrono::steady_clock;
  /// Data is refused so often before a station is given up.
  static constexpr int kMostRefusals = 3;
  enum class Loss : std::uint8_t { kStation, kDevice };

  Renewal(HandleTable& table, MediaOpener& opener, PlaybackNotes& notes, ShutdownQueue& shutdowns,
          RenewalOptions options)
      : table_(table), opener_(opener), notes_(notes), shutdowns_(shutdowns), options_(std::move(options)) {}

  /// The session that the handles are of has lost its station, or its device, while it played or, which
  /// leaves it alone until the next Start, was paused or stopped. It is closed, and it and its source are
  /// shut down when that is done.
  void Begin(const std::shared_ptr<SessionWatch>& lost, PlaybackState state, Loss loss);
  /// Does what is due. The new session, once, when it was started.
  std::shared_ptr<SessionWatch> Step();
  /// The new session's clock does not run yet.
  [[nodiscard]] bool IsStarting() const { return phase_ == Phase::kStarting; }
  /// Its clock has not run for as long as an opening may take.
  [[nodiscard]] bool StartIsLate() const { return IsStarting() && Clock::now() >= start_ends_; }
  /// The new session has ended before its clock ran, or is late.
  void StartFailed(const std::shared_ptr<SessionWatch>& started, HResult result);
  /// What an operation on a handle of the lost session gives; nothing for one that is to be called.
  std::optional<HResult> Answer(Interface interface_id, std::int32_t slot,
                                std::span<const Argument> arguments);
  /// The state of playing while it lasts, or as it was.
  [[nodiscard]] PlaybackStatus Refine(const PlaybackStatus& status) const;
  /// The caller's clock when the clock of the session that plays is at `played`; it does not begin anew. The
  /// clock of a session that has just lost its station (`kMayBeLost`) may have begun anew already.
  enum class Session : std::uint8_t { kMayBeLost, kPlays };
  std::int64_t Position(std::int64_t played, Session session);
  /// Nothing of the item matters any more. Ends its reads when it is being renewed.
  void Forget();

 private:
  enum class Phase : std::uint8_t {
    kNone,        ///< nothing is lost, or all is done
    kParked,      ///< stopped or paused: nothing happens before Start
    kNoDevice,    ///< nothing takes the sound; nothing is connected either
    kConnecting,  ///< the reader has nothing yet
    kOpening,     ///< the system looks at what the reader has
    kWaiting,     ///< for the next attempt, after what came was no sound
    kStarting,    ///< the new session was started, and its clock does not run yet
    kClosed,      ///< the caller is closing the item, or it was given up
  };
  [[nodiscard]] bool IsOn() const { return phase_ != Phase::kNone; }
  void RememberSound();
  void CloseLost(const std::shared_ptr<SessionWatch>& lost);
  void Continue();
  void AwaitDevice();
  void LookForDevice();
  void ConnectAnew();
  void Connect();
  void Park(Phase phase, ClockState state);
  void LookAtConnection();
  void BeginOpening();
  std::shared_ptr<SessionWatch> EndOpening();
  std::shared_ptr<SessionWatch> Play(OpenedObject opened);
  void Refused(HResult result);
  void WaitForNext(PlaybackFailure failure);
  void Fail(HResult result);
  void LookAtClock();
  void RestoreSound();
  void SetPosition(std::int64_t position);
  [[nodiscard]] std::int64_t PositionNow() const;
  std::optional<HResult> AnswerSession(std::int32_t slot);
  std::optional<HResult> AnswerClock(std::int32_t slot, std::span<const Argument> arguments);
  std::optional<HResult> AnswerVolume(std::int32_t slot, std::span<const Argument> arguments);
  void PassToSession(std::int32_t slot);

  HandleTable& table_;
  MediaOpener& opener_;
  PlaybackNotes& notes_;
  ShutdownQueue& shutdowns_;
  const RenewalOptions options_;
  Phase phase_ = Phase::kNone;
  Loss loss_ = Loss::kStation;   ///< the latest one
  HResult list_means_ = kEFail;  ///< why a station is given up whose address brings a list
  DeviceWait device_wait_;
  DeviceSearch device_search_{options_.look_for_device};
  std::optional<BegunOpening> opening_;
  Clock::time_point opening_ends_{};
  Clock::time_point start_ends_{};
  live::ReconnectSchedule schedule_;
  PlaybackFailure failure_ = PlaybackFailure::kNone;  ///< of the latest attempt, while it waits
  int refusals_ = 0;
  std::int64_t began_ = 0;     ///< the caller's clock when the session that plays was started
  std::int64_t position_ = 0;  ///< the caller's clock when it was last asked
  PlayedTime since_;           ///< how long it has run since then without a session
  ClockState clock_state_ = ClockState::kInvalid;
  bool sound_is_due_ = false;  ///< the new session has not got the volume yet
  std::optional<float> volume_;
  std::optional<std::int32_t> mute_;
};

}  // namespace platform::win32
