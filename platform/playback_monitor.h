#pragma once
// Port: how playing stands, in words a user can be told: connecting, buffering, heard, lost, and why.
// Not for control; the media framework's operations start and stop.

#include <cstdint>

#include "platform/text.h"

namespace platform {

enum class PlaybackState : std::uint8_t {
  kStopped,     ///< nothing is opened, or Stop was carried out
  kConnecting,  ///< the address is being opened
  kBuffering,   ///< opened; waiting for enough data before the sound (goes on)
  kPlaying,     ///< sound is on its way to the device
  kPaused,
  kReconnecting,  ///< a live stream broke; it is opened again until Stop
  kNoDevice,      ///< opened, but no sound device takes the sound; it goes on when one does
  kEnded,         ///< a file was played to its end
  kFailed,        ///< opening failed; see `failure`
};

/// Why opening failed or a connection was lost.
enum class PlaybackFailure : std::uint8_t {
  kNone,
  kNoAnswer,  ///< the server was silent, or does not answer at all
  kUnknownHost,
  kRefused,     ///< nobody listens on the port
  kHttpStatus,  ///< see `http_status`
  kCertificateExpired,
  kCertificateOtherName,
  kCertificateUnknownIssuer,
  kCertificateOther,
  kTooManyRedirects,
  kWebPage,     ///< text or HTML instead of sound
  kNoDecoder,   ///< see `format` and `package`
  kNotFound,    ///< no such local file
  kUnreadable,  ///< the data is damaged or of no known type
  kNoSoundDevice,
  kConnectionLost,
  kOther,
};

struct PlaybackStatus {
  PlaybackState state = PlaybackState::kStopped;
  PlaybackFailure failure = PlaybackFailure::kNone;  ///< with kFailed and kReconnecting
  int buffered_percent = 0;                          ///< with kBuffering: 0 to 100
  int seconds_to_next_try = 0;                       ///< with kReconnecting: 0 while a try is under way
  int http_status = 0;                               ///< with kHttpStatus
  int bit_rate = 0;                                  ///< with kPlaying: bits per second, 0 when not known
  Text codec;    ///< with kPlaying: a short name ("MP3"), empty when not known
  Text format;   ///< with kNoDecoder: what would have to be decoded
  Text package;  ///< with kNoDecoder: the Debian package that can, empty when none is known

  friend bool operator==(const PlaybackStatus&, const PlaybackStatus&) = default;
};

/// Called on the user-interface thread; never waits.
class PlaybackMonitor {
 public:
  virtual ~PlaybackMonitor() = default;
  /// Of the item that was opened last.
  [[nodiscard]] virtual PlaybackStatus Status() const = 0;
};

}  // namespace platform
