#pragma once
// What happens to an item on each event: its phases, the events, and the table of both.
// Not the execution, and no GStreamer; media_supervisor.h does what the table says.

#include <array>
#include <concepts>
#include <cstdint>
#include <optional>

namespace platform::gstreamer {

/// What the caller wants from an item; the last request counts.
enum class Wanted : std::uint8_t { kOpened, kRunning, kPaused, kStopped, kShutDown };

/// Live streams are opened again when they break, and then play what is sent at that time. A file is not, but
/// continues where it was when a device is found.
enum class ItemKind : std::uint8_t { kLive, kFile };

/// An item has two pipelines at most: the one that is heard, and an attempt, which is being opened or waits
/// for its turn. Each phase says which of them there are.
enum class Phase : std::uint8_t {
  kOpening,          ///< attempt: the first one; nothing has been opened yet
  kSounding,         ///< heard: it plays, is paused or waits until enough is buffered
  kBridging,         ///< heard: its source is gone, what was buffered is played
  kBridgingOpening,  ///< heard, attempt: meanwhile the stream is opened again
  kBridgingOpened,   ///< heard, attempt: it is open and takes its turn once what was buffered is over
  kSilent,           ///< none: waits until the next attempt is due, and for a device
  kReopening,        ///< attempt: nothing is heard any more
  kStopped,          ///< none: until Start
  kEnded,            ///< none: a file is over, or has broken off; Start plays it from its beginning
  kFailed,           ///< none: the first attempt failed, which is final
};
inline constexpr int kPhases = 10;

enum class ItemEvent : std::uint8_t {
  kAttemptDue,     ///< the schedule allows an attempt, a device takes the sound, and the item is to run
  kAttemptOpened,  ///< the first sound of the attempt is decoded
  kAttemptFailed,  ///< the attempt has failed, or has taken too long
  kNoDevice,       ///< no device takes the sound of the attempt
  kSourceEnded,    ///< no more data comes: the server closed the connection, or a file was read to its end
  kSourceBroken,   ///< the connection or its data failed
  kNothingLeft,    ///< the device has taken all that there will ever be of this sound
  kHeardOut,       ///< ... and has played it
  kDeviceGone,     ///< the device takes no more sound
  kStart,
  kStop,  ///< Stop and close alike; Pause only pauses what is heard
};
inline constexpr int kItemEvents = 11;

/// What is to be done with the pipelines when the phase has changed.
enum class Action : std::uint8_t {
  kNothing,
  kOpen,         ///< begin an attempt
  kOpenUnheard,  ///< drop the attempt and begin one that needs no device: the address is tried all the same
  kDropAttempt,
  kPromote,       ///< the attempt becomes what is heard
  kNoteLoss,      ///< the schedule of attempts begins
  kAwaitSilence,  ///< kHeardOut comes when the device has played what it holds; at once when nothing plays
  kDropHeard,
  kChangeOver,  ///< drop what is heard; the attempt takes its place
  kDropBoth,    ///< the time played stays
  kEnd,         ///< drop both; the time played begins again
};

/// Several phases, for the rows that they have in common.
class Phases {
 public:
  template <std::same_as<Phase>... All>
  constexpr Phases(All... all) : bits_((Bit(all) | ... | 0U)) {}
  [[nodiscard]] constexpr bool Has(Phase phase) const { return (bits_ & Bit(phase)) != 0; }

 private:
  static constexpr unsigned Bit(Phase phase) { return 1U << static_cast<unsigned>(phase); }
  unsigned bits_;
};

inline constexpr Phases kWithHeard = {Phase::kSounding, Phase::kBridging, Phase::kBridgingOpening,
                                      Phase::kBridgingOpened};
inline constexpr Phases kWithAttempt = {Phase::kOpening, Phase::kBridgingOpening, Phase::kBridgingOpened,
                                        Phase::kReopening};
/// Opened once, and neither stopped nor over.
inline constexpr Phases kGoingOn = {Phase::kSounding,       Phase::kBridging, Phase::kBridgingOpening,
                                    Phase::kBridgingOpened, Phase::kSilent,   Phase::kReopening};

struct Transition {
  Phases from;
  ItemEvent event;
  std::optional<ItemKind> kind;  ///< nothing: both
  std::optional<Phase> next;     ///< nothing: the phase stays
  Action action;
};

namespace phase_table {

using enum Phase;
using enum ItemEvent;
using enum Action;
using enum ItemKind;
inline constexpr std::optional<ItemKind> kBoth;
inline constexpr std::optional<Phase> kSame;

/// What is not in the table changes nothing.
inline constexpr std::array kRows = {
    // The first attempt. Without a device the address is tried all the same, so that a bad one fails.
    Transition{kOpening, kAttemptOpened, kBoth, kSounding, kPromote},
    Transition{kOpening, kAttemptFailed, kBoth, kFailed, kDropAttempt},
    Transition{kOpening, kNoDevice, kBoth, kOpening, kOpenUnheard},

    // A server dies: what was buffered bridges the loss while the stream is opened again.
    Transition{kSounding, kSourceEnded, kLive, kBridging, kNoteLoss},
    Transition{kSounding, kSourceBroken, kLive, kBridging, kNoteLoss},
    Transition{kBridging, kAttemptDue, kBoth, kBridgingOpening, kOpen},
    Transition{kBridgingOpening, kAttemptOpened, kBoth, kBridgingOpened, kNothing},
    Transition{{kBridgingOpening, kBridgingOpened}, kAttemptFailed, kLive, kBridging, kDropAttempt},
    Transition{{kBridgingOpening, kBridgingOpened}, kNoDevice, kBoth, kBridging, kDropAttempt},

    // The earlier sound is over.
    Transition{kWithHeard, kNothingLeft, kBoth, kSame, kAwaitSilence},
    Transition{{kSounding, kBridging}, kHeardOut, kLive, kSilent, kDropHeard},
    Transition{kBridgingOpening, kHeardOut, kLive, kReopening, kDropHeard},
    Transition{kBridgingOpened, kHeardOut, kLive, kSounding, kChangeOver},
    Transition{kWithHeard, kHeardOut, kFile, kEnded, kEnd},
    Transition{kWithHeard, kSourceBroken, kFile, kEnded, kEnd},

    // Nothing is heard.
    Transition{kSilent, kAttemptDue, kBoth, kReopening, kOpen},
    Transition{kReopening, kAttemptOpened, kBoth, kSounding, kPromote},
    Transition{kReopening, kAttemptFailed, kLive, kSilent, kDropAttempt},
    Transition{kReopening, kNoDevice, kBoth, kSilent, kDropAttempt},
    Transition{{kReopening, kBridgingOpening, kBridgingOpened}, kAttemptFailed, kFile, kEnded, kEnd},

    // A device disappears: the stream is closed, so that nothing piles up, and is opened again for the next
    // device.
    Transition{kGoingOn, kDeviceGone, kBoth, kSilent, kDropBoth},

    // The caller.
    Transition{kOpening, kStop, kBoth, kStopped, kEnd},
    Transition{kGoingOn, kStop, kBoth, kStopped, kEnd},
    Transition{{kStopped, kEnded}, kStart, kBoth, kSilent, kNothing},
};

}  // namespace phase_table

struct Step {
  Phase next;
  Action action = Action::kNothing;
};

/// What the table says about an item of that kind.
constexpr Step NextStep(Phase phase, ItemEvent event, ItemKind kind) {
  for (const Transition& row : phase_table::kRows) {
    const bool applies = row.from.Has(phase) && row.event == event && row.kind.value_or(kind) == kind;
    if (applies) return {row.next.value_or(phase), row.action};
  }
  return {phase};
}

/// The item's caller wants it to be heard, and it can be.
constexpr bool Runs(Phase phase, Wanted wanted) {
  return wanted == Wanted::kRunning && phase != Phase::kEnded && phase != Phase::kFailed;
}

/// An attempt is made as soon as the schedule and the devices allow it (kAttemptDue).
constexpr bool WantsAttempt(Phase phase, Wanted wanted) {
  return Runs(phase, wanted) && (phase == Phase::kBridging || phase == Phase::kSilent);
}

}  // namespace platform::gstreamer
