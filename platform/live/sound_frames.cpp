#include "platform/live/sound_frames.h"

#include <array>

namespace platform::live {
namespace {

/// As much of a header as either format needs.
constexpr std::size_t kHeaderSize = 7;
constexpr int kReserved = 0;

using Rates = std::array<int, 4>;
using BitRates = std::array<int, 16>;

/// Samples per second of MPEG 1; MPEG 2 has half of it, MPEG 2.5 a quarter.
constexpr Rates kRates = {44100, 48000, 32000, kReserved};
/// Kilobits per second.
constexpr BitRates kLayer3OfMpeg1 = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
constexpr BitRates kLayer2OfMpeg1 = {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0};
constexpr BitRates kMpeg2 = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0};
constexpr std::array<int, 16> kAacRates = {96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050,
                                           16000, 12000, 11025, 8000,  7350,  0,     0,     0};

unsigned At(std::string_view bytes, std::size_t index) { return static_cast<unsigned char>(bytes[index]); }

}  // namespace

std::optional<SoundFrames::Frame> SoundFrames::ReadMp3(std::string_view bytes) {
  constexpr unsigned kMpeg25 = 0;
  constexpr unsigned kNoVersion = 1;
  constexpr unsigned kMpeg1 = 3;
  constexpr unsigned kLayer3 = 1;
  constexpr unsigned kLayer2 = 2;
  const unsigned version = At(bytes, 1) >> 3 & 3;
  const unsigned layer = At(bytes, 1) >> 1 & 3;
  if (version == kNoVersion || (layer != kLayer3 && layer != kLayer2)) return std::nullopt;
  const BitRates& of_mpeg1 = layer == kLayer3 ? kLayer3OfMpeg1 : kLayer2OfMpeg1;
  const int bit_rate = 1000 * (version == kMpeg1 ? of_mpeg1 : kMpeg2).at(At(bytes, 2) >> 4);
  const int parts = version == kMpeg1 ? 1 : version == kMpeg25 ? 4 : 2;
  const int rate = kRates.at(At(bytes, 2) >> 2 & 3) / parts;
  if (bit_rate == kReserved || rate == kReserved) return std::nullopt;
  const int samples = layer == kLayer3 && version != kMpeg1 ? 576 : 1152;
  const int padding = static_cast<int>(At(bytes, 2) >> 1 & 1);
  const auto size = static_cast<std::size_t>(samples / 8 * bit_rate / rate + padding);
  return Frame{SoundFormat::kMp3, size, samples, rate};
}

std::optional<SoundFrames::Frame> SoundFrames::ReadAac(std::string_view bytes) {
  const bool adts = At(bytes, 1) >> 4 == 0xF && (At(bytes, 1) >> 1 & 3) == 0;
  const int rate = kAacRates.at(At(bytes, 2) >> 2 & 15);
  const std::size_t size = (At(bytes, 3) & 3) << 11 | At(bytes, 4) << 3 | At(bytes, 5) >> 5;
  if (!adts || rate == kReserved || size < kHeaderSize) return std::nullopt;
  const int samples = 1024 * static_cast<int>(1 + (At(bytes, 6) & 3));
  return Frame{SoundFormat::kAac, size, samples, rate};
}

std::optional<SoundFrames::Frame> SoundFrames::ReadHeader(std::string_view bytes) {
  if (bytes.size() < kHeaderSize || At(bytes, 0) != 0xFF || At(bytes, 1) >> 5 != 7) return std::nullopt;
  const auto mp3 = ReadMp3(bytes);
  return mp3 ? mp3 : ReadAac(bytes);
}

// Two bytes that look like a header's beginning are found in every stream; two frames that touch are not.
bool SoundFrames::Follows(const Frame& frame, std::string_view next) const {
  const auto following = ReadHeader(next);
  return following && following->format == frame.format && following->rate == frame.rate;
}

void SoundFrames::Count(const Frame& frame) {
  format_ = frame.format;
  sound_ += std::chrono::duration_cast<Length>(std::chrono::seconds(frame.samples)) / frame.rate;
  bytes_ += frame.size;
}

void SoundFrames::Append(std::string_view bytes) {
  rest_ += bytes;
  std::string_view rest = rest_;
  while (rest.size() >= kHeaderSize) {
    const auto frame = ReadHeader(rest);
    const bool known = frame && inside_ && frame->format == format_;
    if (frame && rest.size() < frame->size + (known ? 0 : kHeaderSize)) break;
    inside_ = frame && (known || Follows(*frame, rest.substr(frame->size)));
    if (inside_) Count(*frame);
    rest.remove_prefix(inside_ ? frame->size : 1);
  }
  rest_.erase(0, rest_.size() - rest.size());
}

int SoundFrames::BitRate() const {
  if (sound_.count() == 0) return 0;
  return static_cast<int>(static_cast<double>(bytes_) * 8e9 / static_cast<double>(sound_.count()));
}

}  // namespace platform::live
