#pragma once
// A pipeline with what its supervisor knows of it: how far it is opened, its buffer, its device, its end.
// Not what follows from that; media_supervisor.h decides.

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/gstreamer/device_watch.h"
#include "platform/gstreamer/pipeline.h"
#include "platform/gstreamer/reserve.h"

namespace platform::gstreamer {

struct Line {
  using Clock = std::chrono::steady_clock;

  std::shared_ptr<Pipeline> pipeline;
  bool sought = false;  ///< a file goes on where it was
  bool prerolled = false;
  bool filled = false;       ///< enough is buffered
  int percent = 0;           ///< buffered of what is wanted before the sound
  bool source_gone = false;  ///< only what is buffered is left
  bool playing = false;
  Clock::time_point deadline{};                   ///< of opening
  Clock::time_point playing_since{};              ///< while `playing`
  std::optional<Clock::time_point> played_since;  ///< when it was first heard
  std::optional<Clock::time_point> silent_at;     ///< when the end has been heard, once it is near
  std::optional<Clock::time_point> dry_at;        ///< when the device is as good as dry, once the buffer is
  Reserve reserve;
  Standstill standstill;

  /// What the buffer holds has changed.
  enum class Buffer : std::uint8_t {
    kAsBefore,
    kFilled,  ///< the sound may start or go on
    kDry,     ///< the device has only what it holds itself
  };
  Buffer LookAtBuffer(Clock::time_point now);

  [[nodiscard]] bool HasSound() const { return filled || dry_at || silent_at; }
  void SetPlaying(bool play, Clock::time_point now);

  /// Its device takes no more sound though there is some.
  [[nodiscard]] bool StandsStill(Clock::time_point now);
  /// When to ask that again; nothing while no sound is meant for a device.
  [[nodiscard]] std::optional<Clock::time_point> NextStandstillCheck() const;

 private:
  [[nodiscard]] bool FeedsDevice() const { return playing && filled && !silent_at && pipeline->Heard(); }
  [[nodiscard]] Clock::time_point SuppliedUntil() const;
};

}  // namespace platform::gstreamer
