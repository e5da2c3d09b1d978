#include "platform/gstreamer/peak_meter.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

namespace platform::gstreamer {
namespace {

constexpr std::size_t kIntervalsPerSecond = 50;
constexpr std::int64_t kNanoseconds = 1'000'000'000;

std::size_t SampleBytes(PeakMeter::Sample sample) { return sample == PeakMeter::Sample::kInt16 ? 2 : 4; }

/// The largest absolute value of every `stride`-th sample, as a share of full scale. What is not a number is
/// passed over.
template <typename Sample>
float PeakOf(std::span<const std::byte> samples, std::size_t stride) {
  Sample highest = 0;
  Sample lowest = 0;
  for (std::size_t at = 0; at + sizeof(Sample) <= samples.size(); at += stride * sizeof(Sample)) {
    Sample sample;
    std::memcpy(&sample, samples.data() + at, sizeof(Sample));
    highest = std::max(highest, sample);
    lowest = std::min(lowest, sample);
  }
  constexpr float kFullScale =
      std::is_floating_point_v<Sample> ? 1.0F : -static_cast<float>(std::numeric_limits<Sample>::min());
  return std::min(1.0F, std::max(static_cast<float>(highest), -static_cast<float>(lowest)) / kFullScale);
}

float PeakOf(PeakMeter::Sample sample, std::span<const std::byte> samples, std::size_t stride) {
  switch (sample) {
    case PeakMeter::Sample::kInt16:
      return PeakOf<std::int16_t>(samples, stride);
    case PeakMeter::Sample::kInt32:
      return PeakOf<std::int32_t>(samples, stride);
    case PeakMeter::Sample::kFloat32:
      return PeakOf<float>(samples, stride);
  }
  return 0.0F;
}

}  // namespace

void PeakMeter::SetFormat(const Format& format) {
  format_ = format;
  frame_bytes_ = format.channels * SampleBytes(format.sample);
  const bool has_sound = frame_bytes_ > 0 && format.rate > 0;
  interval_frames_ = has_sound ? std::max<std::size_t>(1, format.rate / kIntervalsPerSecond) : 0;
  measured_frames_ = 0;
  peaks_.assign(format.channels, 0.0F);
}

void PeakMeter::Measure(std::span<const std::byte> sound, const Report& report) {
  if (interval_frames_ == 0) return;
  while (sound.size() >= frame_bytes_) {
    const std::size_t frames = std::min(interval_frames_ - measured_frames_, sound.size() / frame_bytes_);
    Raise(sound.first(frames * frame_bytes_));
    sound = sound.subspan(frames * frame_bytes_);
    measured_frames_ += frames;
    if (measured_frames_ < interval_frames_) return;
    EndInterval(report);
  }
}

void PeakMeter::Finish(const Report& report) {
  if (measured_frames_ > 0) EndInterval(report);
}

void PeakMeter::EndInterval(const Report& report) {
  const auto frames = static_cast<std::int64_t>(std::exchange(measured_frames_, 0));
  report(frames * kNanoseconds / static_cast<std::int64_t>(format_.rate),
         std::exchange(peaks_, std::vector<float>(format_.channels)));
}

void PeakMeter::Raise(std::span<const std::byte> frames) {
  const std::size_t sample_bytes = SampleBytes(format_.sample);
  for (std::size_t channel = 0; channel < peaks_.size(); ++channel) {
    const float peak = PeakOf(format_.sample, frames.subspan(channel * sample_bytes), format_.channels);
    peaks_[channel] = std::max(peaks_[channel], peak);
  }
}

}  // namespace platform::gstreamer
