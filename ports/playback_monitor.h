#pragma once
// Port: the state of playing, in terms a user understands: connecting, buffering, heard, lost, and why.
// Not for control; the media framework's operations start and stop.

#include <cstdint>

#include "ports/text.h"

namespace platform {

enum class PlaybackState : std::uint8_t {
  kStopped,       ///< nothing was opened, opening was given up, or playing was stopped or closed
  kConnecting,    ///< the address is being opened, or is open and not started yet
  kBuffering,     ///< waits for enough data before the sound continues
  kPlaying,       ///< sound goes to the device; also while buffered data bridges a loss
  kPaused,        ///< by the caller
  kReconnecting,  ///< a live stream broke; it is opened again until Stop
  kNoDevice,      ///< no device takes the sound; playing continues when one does
  kEnded,         ///< a file was played to its end
  kFailed,        ///< opening failed, or a file broke off for good; stays until the next opening
};

/// Why opening failed or a connection was lost.
enum class PlaybackFailure : std::uint8_t {
  kNone,
  kBadAddress,   ///< no address that can be opened at all
  kUnknownHost,  ///< the name cannot be resolved
  kNoAnswer,     ///< nothing arrived in time, or the host cannot be reached
  kRefused,      ///< nobody listens on the port
  kHungUp,       ///< the connection was closed without an answer
  kHttpStatus,   ///< see `http_status`
  kTooManyRedirects,
  kCertificateExpired,
  kCertificateNotYetValid,
  kCertificateOtherName,
  kCertificateUnknownIssuer,
  kNoSecureConnection,  ///< another trouble with TLS
  kWebPage,             ///< text or HTML instead of sound
  kNoDecoder,           ///< see `format` and `package`
  kNotFound,            ///< no such local file
  kNoAccess,            ///< a local file that cannot be read
  kUnreadable,          ///< the data is damaged or holds no sound
  kNoSoundDevice,
  kConnectionLost,
  kOther,
};

struct PlaybackStatus {
  PlaybackState state = PlaybackState::kStopped;
  PlaybackFailure failure = PlaybackFailure::kNone;  ///< with kFailed and kReconnecting
  int buffered_percent = 0;                          ///< with kBuffering: 0 to 100
  int seconds_to_next_try = 0;                       ///< with kReconnecting: 0 during an attempt
  int http_status = 0;                               ///< with kHttpStatus
  int bit_rate = 0;                                  ///< with kPlaying: bits per second, 0 when not known
  Text codec;    ///< with kPlaying: a short name ("MP3"), empty when not known
  Text format;   ///< with kNoDecoder: what would have to be decoded, in the system's words
  Text package;  ///< with kNoDecoder: the Debian package that can, empty when none is known

  friend bool operator==(const PlaybackStatus&, const PlaybackStatus&) = default;
};

/// Called on the user-interface thread, at any time; never waits.
class PlaybackMonitor {
 public:
  virtual ~PlaybackMonitor() = default;
  /// Of the item that was opened last, even when it has been closed since.
  [[nodiscard]] virtual PlaybackStatus Status() const = 0;
};

}  // namespace platform
