#pragma once
// Measures the sound in a stream by the headers of its frames, without decoding them. Not for streams in a
// container (Ogg), which have none.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform::live {

enum class SoundFormat : std::uint8_t { kUnknown, kMp3, kAac };

/// MP3 (MPEG 1, 2 and 2.5, layer III and II; ISO/IEC 11172-3 and 13818-3) and AAC in ADTS frames (ISO/IEC
/// 14496-3). What is no frame is passed over, so a stream may begin or break in the middle of one.
class SoundFrames {
 public:
  using Length = std::chrono::nanoseconds;

  /// The next bytes of the stream. No more than a frame of them is kept.
  void Append(std::string_view bytes);

  /// kUnknown until two frames have followed each other.
  [[nodiscard]] SoundFormat Format() const { return format_; }
  /// Of all whole frames so far.
  [[nodiscard]] Length Sound() const { return sound_; }
  /// The average so far, in bits per second; 0 before the first frame.
  [[nodiscard]] int BitRate() const;

 private:
  struct Frame {
    SoundFormat format = SoundFormat::kUnknown;
    std::size_t size = 0;  ///< bytes
    int samples = 0;
    int rate = 0;  ///< samples per second
  };
  static std::optional<Frame> ReadHeader(std::string_view bytes);
  static std::optional<Frame> ReadMp3(std::string_view bytes);
  static std::optional<Frame> ReadAac(std::string_view bytes);
  [[nodiscard]] bool Follows(const Frame& frame, std::string_view next) const;
  void Count(const Frame& frame);

  std::string rest_;     ///< of what was appended: it may be the beginning of a frame
  bool inside_ = false;  ///< the latest bytes were a frame
  SoundFormat format_ = SoundFormat::kUnknown;
  Length sound_{};
  std::uint64_t bytes_ = 0;
};

}  // namespace platform::live
