#pragma once
// A live stream over HTTP that is connected again when it is lost: what it has sent is in a buffer, which
// pauses when it runs dry. Not its decoding.

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/live/reconnect_schedule.h"
#include "platform/win32/media/http_stream.h"
#include "platform/win32/media/locks.h"
#include "platform/win32/media/sound_gate.h"
#include "platform/win32/media/stream_buffer.h"
#include "ports/playback_monitor.h"
#include "ports/text.h"

namespace platform::win32 {

struct LiveStreamOptions {
  /// A stream that sends nothing for this long is opened again.
  std::chrono::milliseconds stall_limit;
  Text user_agent;
  /// What a first connection that fails means: the end, or one more of a lost station's failed attempts.
  enum class First : std::uint8_t { kDecides, kIsOneOfMany };
  First first = First::kDecides;
};

/// All members may be called from any thread.
class LiveStream {
 public:
  LiveStream(const Text& address, const LiveStreamOptions& options);
  /// Does not wait for the server.
  ~LiveStream();
  LiveStream(const LiveStream&) = delete;
  LiveStream& operator=(const LiveStream&) = delete;

  /// The first connection has brought what may be sound, or has failed.
  [[nodiscard]] bool Decided() const;
  /// With the type of the sound itself where that is known, whatever the server says.
  [[nodiscard]] std::optional<HttpAnswer> Answer() const;
  /// Why the first connection failed, or the latest one was lost.
  [[nodiscard]] PlaybackFailure Failure() const;
  [[nodiscard]] int HttpStatus() const;
  /// The latest text that came in place of sound was a list of addresses or segments.
  [[nodiscard]] bool IsList() const;
  /// While it plays: buffering, playing or connecting again, which it is before the first sound, too.
  [[nodiscard]] PlaybackStatus Status() const;
  /// How the data begins, in words, when that is known.
  [[nodiscard]] Text FormatName() const;

  [[nodiscard]] const std::shared_ptr<StreamBuffer>& Buffer() const { return buffer_; }
  /// Disconnects; every read is answered with nothing.
  void EndReads();
  /// EndReads in that time, also when nobody asks any more.
  void EndReadsIn(std::chrono::milliseconds time);
  /// After EndReads: connects again and begins at position 0.
  void ResumeReads();
  /// The player was started, or paused: then it is not connected again.
  void Playing();
  void Paused();

 private:
  using Clock = std::chrono::steady_clock;
  void Supervise();
  /// One connection, from its beginning to its end; true when another is to follow.
  bool Connect(Lock& lock);
  /// Waits until it is over, or nobody wants it any more.
  void Follow(const HttpStream& connection, Lock& lock);
  void Judge(const HttpStream& connection);
  void WatchSound(Lock& lock);
  void NoteEnd(const HttpStream& connection, std::optional<Clock::time_point> sound_since);
  [[nodiscard]] bool MayTry() const;
  void WaitForTurn(Lock& lock);
  void EndReadsWhenDue(Lock& lock);

  const Text address_;
  const LiveStreamOptions options_;
  const std::shared_ptr<StreamBuffer> buffer_ = std::make_shared<StreamBuffer>();
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<HttpAnswer> answer_;  ///< of the first connection that brought sound
  PlaybackFailure failure_ = PlaybackFailure::kNone;
  int http_status_ = 0;
  bool failed_ = false;  ///< the first connection
  bool connecting_ = false;
  bool page_ = false;  ///< the latest connection has brought a text in place of sound
  bool list_ = false;  ///< the latest such text was an M3U list
  bool sound_called_text_ = false;
  bool ended_ = false;  ///< nobody reads any more, until ResumeReads
  bool paused_ = false;
  std::optional<Clock::time_point> reads_end_at_;
  bool stopping_ = false;
  std::optional<Clock::time_point> connected_at_;  ///< of a connection that has brought sound
  live::ReconnectSchedule schedule_;
  SoundGate gate_;
  std::thread supervisor_;
};

}  // namespace platform::win32
