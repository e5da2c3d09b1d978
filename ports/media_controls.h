#pragma once
// Port: the desktop's own controls for whatever plays: media keys, a panel's player, a lock screen. It shows
// what plays there and brings the commands back. Not the player, nor what a command means.

#include <cstdint>

#include "ports/text.h"

namespace platform {

enum class MediaPlayback : std::uint8_t { kStopped, kPaused, kPlaying };

/// What plays. A text that is empty is not known.
struct MediaTrack {
  std::uint64_t number = 0;  ///< another one for everything that is started; 0: nothing plays
  Text station;
  Text artist;
  Text title;
  Text picture;  ///< the path of an image file
  Text address;  ///< of the stream

  friend bool operator==(const MediaTrack&, const MediaTrack&) = default;
};

struct MediaState {
  MediaPlayback playback = MediaPlayback::kStopped;
  MediaTrack track;
  int volume = 0;  ///< 0 to 100
  bool can_play = false;
  bool can_go_next = false;
  bool can_go_previous = false;

  friend bool operator==(const MediaState&, const MediaState&) = default;
};

enum class MediaCommand : std::uint8_t {
  kPlay,
  kPause,
  kPlayPause,
  kStop,
  kNext,
  kPrevious,
  kRaise,  ///< bring the window to the front
  kQuit
};

/// Who receives the desktop's commands. They may come inside any wait of the program, so nothing but taking
/// note of them may happen in these calls.
class MediaReceiver {
 public:
  virtual ~MediaReceiver() = default;
  virtual void Receive(MediaCommand command) = 0;
  /// 0 to 100.
  virtual void ReceiveVolume(int volume) = 0;
};

/// Called on the user-interface thread, on which the receiver is called too. Nothing here waits or fails
/// visibly: a system without such controls, or one that loses them, takes every call and does nothing.
class MediaControls {
 public:
  virtual ~MediaControls() = default;
  /// The program's player appears on the desktop; `receiver` receives commands until Withdraw. Once, before
  /// any other call.
  virtual void Appear(MediaReceiver& receiver) = 0;
  /// What is shown from now on; what equals the state before is not sent again.
  virtual void Publish(const MediaState& state) = 0;
  /// The player disappears; no command comes any more.
  virtual void Withdraw() = 0;
};

}  // namespace platform
