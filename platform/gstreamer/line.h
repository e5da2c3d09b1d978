#pragma once
// A pipeline with what is known about it: its buffer, its device, its end; and an attempt to open one.
// Not what follows from that; item_phases.h decides.

#include <chrono>
#include <cstdint>
#include <memory>

#include "platform/gstreamer/device_watch.h"
#include "platform/gstreamer/pipeline.h"
#include "platform/gstreamer/timers.h"
#include "platform/live/reserve.h"

namespace platform::gstreamer {

struct Line {
  using Clock = std::chrono::steady_clock;

  std::shared_ptr<Pipeline> pipeline;  ///< null: there is none
  bool filled = false;                 ///< enough is buffered
  int percent = 0;                     ///< buffered of what is wanted before the sound
  bool playing = false;
  Clock::time_point playing_since{};  ///< while `playing`
  Timer played_since;                 ///< when it was first heard
  Timer silent_at;                    ///< when the end has been heard, once it is near
  Timer dry_at;                       ///< when the device is nearly dry, once the buffer is
  live::Reserve reserve;
  Standstill standstill;

  /// What the buffer holds has changed.
  enum class Buffer : std::uint8_t {
    kAsBefore,
    kFilled,  ///< the sound may start or continue
    kDry,     ///< the device has only what it holds itself
  };
  Buffer LookAtBuffer(Clock::time_point now);
  /// After kDry: more is to come, so what the device holds is played before the sound pauses.
  void PauseOnceDeviceIsDry(Clock::time_point now);

  [[nodiscard]] bool HasSound() const { return filled || dry_at || silent_at; }
  void SetPlaying(bool play, Clock::time_point now);

  /// Its device takes no more sound although there is some.
  [[nodiscard]] bool StandsStill(Clock::time_point now);
  /// When to check that again; nothing while no sound is meant for a device.
  [[nodiscard]] Timer NextStandstillCheck() const;

 private:
  [[nodiscard]] bool FeedsDevice() const { return playing && filled && !silent_at && pipeline->Heard(); }
  [[nodiscard]] Clock::time_point SuppliedUntil() const;
};

struct Attempt {
  Line line;
  Timer deadline;            ///< nothing once it is open
  Timer length_deadline;     ///< while it would be open if its length were known
  bool sought = false;       ///< a file continues where it was
  bool source_gone = false;  ///< only what is buffered is left
};

}  // namespace platform::gstreamer
