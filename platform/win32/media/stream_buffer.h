#pragma once
// What a live stream has sent lately, by its position: answers reads as soon as their bytes are there, and
// knows how much sound that is. No network and no COM.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

#include "platform/live/sound_frames.h"

namespace platform::win32 {

/// All members may be called from any thread. Nothing is called while the buffer is locked.
class StreamBuffer {
 public:
  using Clock = std::chrono::steady_clock;
  using Length = std::chrono::nanoseconds;
  using Done = std::function<void(std::size_t)>;
  /// The length that the stream claims, so that whoever plays it believes that it can be searched.
  static constexpr std::uint64_t kLength = std::uint64_t{1} << 40;
  /// A reader may go back this far, as one does that has first looked at the beginning.
  static constexpr std::size_t kKeptBehind = 1 << 20;
  /// Whoever asks for large blocks would wait for seconds until a station has sent one.
  static constexpr std::size_t kEnough = 4096;
  /// No more than this is taken from a server before it is asked for.
  static constexpr std::size_t kMostAhead = 1 << 19;

  /// `done` gets the number of bytes once all that was asked for is there, or kEnough of it: at once, or in a
  /// later call of another member. It gets less when no more comes, and nothing for a position that has
  /// passed or lies far ahead, such as the end.
  void Read(std::uint64_t position, std::span<std::byte> target, Done done);
  /// Waits while the buffer is full. False once reading has ended or `cancelled` is set.
  bool Append(std::span<const std::byte> bytes, const std::atomic<bool>& cancelled);
  /// While it is shut, reads wait although their bytes are there.
  enum class Gate : std::uint8_t { kOpen, kShut };
  void Set(Gate gate);
  /// No more comes: what is there is the whole.
  void Finish();
  /// Answers every read with nothing, also later ones, until Resume.
  void EndReads();
  /// Reading begins again at position 0 with what is appended from now on.
  void Resume();

  struct Level {
    live::SoundFormat format = live::SoundFormat::kUnknown;
    int bit_rate = 0;             ///< measured; 0 for an unknown format
    bool read_waits = false;      ///< whoever plays a stream as it is sent always has one for a moment
    Length given{};               ///< the sound in what was read; none for an unknown format
    Length ahead{};               ///< the sound beyond that
    std::size_t bytes_ahead = 0;  ///< the same in bytes
    Clock::time_point appended_at{};
  };
  [[nodiscard]] Level Look() const;
  /// Every read at that position is answered with nothing, because nobody reads any more or no more comes.
  [[nodiscard]] bool IsOverAt(std::uint64_t position) const;
  [[nodiscard]] bool BeginsWith(std::string_view text) const;

 private:
  struct Wanted {
    std::uint64_t position;
    std::span<std::byte> target;
    Done done;
  };
  struct Answer {
    Done done;
    std::size_t count;
  };
  [[nodiscard]] bool Answerable(const Wanted& wanted) const;
  Answer Take(Wanted wanted);
  std::list<Answer> TakeAnswerable();
  [[nodiscard]] std::uint64_t End() const { return begin_ + bytes_.size(); }
  [[nodiscard]] Length SoundBefore(std::uint64_t position) const;

  mutable std::mutex mutex_;
  std::condition_variable room_;
  std::list<Wanted> waiting_;
  std::string bytes_;
  std::uint64_t begin_ = 0;        ///< the position of the first byte that is kept
  std::uint64_t asked_up_to_ = 0;  ///< the end of the furthest read
  std::uint64_t given_up_to_ = 0;  ///< the end of the furthest read that was answered
  live::SoundFrames frames_;
  /// How much sound there was in everything before a position, when that was the end.
  struct Mark {
    std::uint64_t position;
    Length sound;
  };
  std::deque<Mark> marks_;
  Gate gate_ = Gate::kOpen;
  Clock::time_point appended_at_{};
  bool finished_ = false;
  bool ended_ = false;
};

}  // namespace platform::win32
