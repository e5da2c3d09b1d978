#pragma once
// Continues a station that the system's own reader has lost: with the adapter's reader and a session of its
// own, behind the handles of the old ones. Not the reader's connections (media/live_stream.h).

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "platform/win32/media/handle_table.h"
#include "platform/win32/media/media_opener.h"
#include "platform/win32/media/opening.h"
#include "platform/win32/media/playback_notes.h"
#include "platform/win32/media/session_watch.h"
#include "ports/interface_call.h"

namespace platform::win32 {

/// All members belong to the user-interface thread and do not wait. Meanwhile the clock runs for the caller,
/// and Stop, Pause, Start and the volume have the effect that they have on a session that plays.
class Renewal {
 public:
  Renewal(HandleTable& table, MediaOpener& opener, PlaybackNotes& notes)
      : table_(table), opener_(opener), notes_(notes) {}

  /// The session that the handles are of has lost its station. It is closed, and it and its source are shut
  /// down when that is done.
  void Begin(const std::shared_ptr<SessionWatch>& lost);
  /// Does what is due. The new session, once, when it was started.
  std::shared_ptr<SessionWatch> Step();
  /// What an operation on a handle of the lost session gives; nothing for one that is to be called.
  std::optional<HResult> Answer(Interface interface_id, std::int32_t slot,
                                std::span<const Argument> arguments);
  /// The state of playing while it lasts, or as it was.
  [[nodiscard]] PlaybackStatus Refine(const PlaybackStatus& status) const;
  /// The caller's clock when the clock of the session that plays is at `played`; it does not begin anew.
  std::int64_t Position(std::int64_t played);
  /// A new item: nothing of the old one matters.
  void Forget();

 private:
  enum class Phase : std::uint8_t {
    kNone,        ///< nothing is lost, or all is done
    kParked,      ///< stopped or paused: nothing happens before Start
    kConnecting,  ///< the reader has nothing yet
    kOpening,     ///< the system looks at what the reader has
    kClosed,      ///< the caller is closing the item
  };
  [[nodiscard]] bool IsOn() const { return phase_ != Phase::kNone; }
  void RememberSound();
  void CloseLost(const std::shared_ptr<SessionWatch>& lost);
  void Connect();
  void Park(Phase step);
  void BeginOpening();
  std::shared_ptr<SessionWatch> Play(OpenedObject opened);
  void Fail(HResult result);
  void RestoreSound();
  std::optional<HResult> AnswerSession(std::int32_t slot);
  std::optional<HResult> AnswerClock(std::int32_t slot, std::span<const Argument> arguments);
  std::optional<HResult> AnswerVolume(std::int32_t slot, std::span<const Argument> arguments);

  HandleTable& table_;
  MediaOpener& opener_;
  PlaybackNotes& notes_;
  Phase phase_ = Phase::kNone;
  std::optional<BegunOpening> opening_;
  std::int64_t began_ = 0;     ///< the caller's clock when the session that plays was started
  std::int64_t position_ = 0;  ///< the caller's clock when it was last asked
  std::int32_t clock_state_ = 0;
  bool has_volume_ = false;
  bool sound_is_due_ = false;  ///< the new session has not got the volume yet
  float volume_ = 1;
  std::int32_t mute_ = 0;
};

}  // namespace platform::win32
