#pragma once
// The peaks of decoded sound, one set for every 20 ms of it.
// Not when they are heard (level_history.h), and no GStreamer: bytes and their format are passed in.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace platform::gstreamer {

/// SetFormat, then Measure for each piece of the sound, and Finish after the last one of a format. A piece
/// may end within an interval; the next one continues it.
class PeakMeter {
 public:
  enum class Sample : std::uint8_t { kInt16, kInt32, kFloat32 };
  /// Samples in the machine's byte order, one of each channel after the other.
  struct Format {
    Sample sample = Sample::kInt16;
    std::size_t channels = 0;
    std::size_t rate = 0;  ///< frames a second
  };
  /// An interval's duration in nanoseconds, and one linear peak of 0 to 1 per channel.
  using Report = std::function<void(std::int64_t duration, std::vector<float> peaks)>;

  /// An interval that was begun is dropped; Finish reports it. Without channels or rate nothing is measured.
  void SetFormat(const Format& format);
  /// Reports each interval that `sound` completes. What is left after its last whole frame is ignored.
  void Measure(std::span<const std::byte> sound, const Report& report);
  /// Reports an interval that was begun, with the duration that it has.
  void Finish(const Report& report);

 private:
  void Raise(std::span<const std::byte> frames);
  void EndInterval(const Report& report);

  Format format_;
  std::size_t frame_bytes_ = 0;
  std::size_t interval_frames_ = 0;  ///< 0: nothing is measured
  std::size_t measured_frames_ = 0;
  std::vector<float> peaks_;
};

}  // namespace platform::gstreamer
