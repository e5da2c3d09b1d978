#include "tests/support/mp3_loop.h"

#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>

namespace test_support {
namespace {

struct FrameHeader {
  int bit_rate;
  int sampling_rate;
  int samples;
  std::size_t bytes;
};

std::optional<FrameHeader> ParseHeader(std::string_view bytes) {
  static constexpr std::array<int, 16> kVersion1{0,   32,  40,  48,  56,  64,  80,  96,
                                                 112, 128, 160, 192, 224, 256, 320, 0};
  static constexpr std::array<int, 16> kVersion2{0,  8,  16, 24,  32,  40,  48,  56,
                                                 64, 80, 96, 112, 128, 144, 160, 0};
  static constexpr std::array<int, 4> kRates{44100, 48000, 32000, 0};
  if (bytes.size() < 4) return std::nullopt;
  std::uint32_t word = 0;
  for (std::size_t n = 0; n < 4; ++n) word = word << 8 | static_cast<unsigned char>(bytes[n]);
  const unsigned version = word >> 19 & 3;  // 0 is 2.5, 1 is reserved, 2 is 2, 3 is 1.
  const unsigned layer = word >> 17 & 3;    // 1 is layer III.
  if (word >> 21 != 0x7FF || version == 1 || layer != 1) return std::nullopt;
  const auto& bit_rates = version == 3 ? kVersion1 : kVersion2;
  const int bit_rate = bit_rates[word >> 12 & 15];
  const int divisor = version == 3 ? 1 : version == 2 ? 2 : 4;
  const int sampling_rate = kRates[word >> 10 & 3] / divisor;
  if (bit_rate == 0 || sampling_rate == 0) return std::nullopt;
  const int samples = version == 3 ? 1152 : 576;
  const int padding = static_cast<int>(word >> 9 & 1);
  const int size = samples / 8 * bit_rate * 1000 / sampling_rate + padding;
  return FrameHeader{bit_rate, sampling_rate, samples, static_cast<std::size_t>(size)};
}

bool IsEncoderTable(std::string_view frame) {
  const std::string_view start = frame.substr(0, 64);
  return start.find("Xing") != std::string_view::npos || start.find("Info") != std::string_view::npos;
}

}  // namespace

Mp3Loop::Mp3Loop(std::string_view file) {
  std::size_t position = 0;
  while (position + 4 <= file.size()) {
    const auto header = ParseHeader(file.substr(position));
    const std::size_t next = header ? position + header->bytes : position + 1;
    // Four bytes of a tag may look like a header; a real frame is followed by another one or by the end.
    const bool is_frame =
        header && next <= file.size() &&
        (next + 4 > file.size() || ParseHeader(file.substr(next)) || file.substr(next, 3) == "TAG");
    if (!is_frame) {
      ++position;
      continue;
    }
    const std::string_view frame = file.substr(position, header->bytes);
    position = next;
    if (frames_.empty() && IsEncoderTable(frame)) continue;
    if (frames_.empty()) {
      bit_rate_ = header->bit_rate;
      frame_duration_ =
          std::chrono::nanoseconds(std::int64_t{header->samples} * 1'000'000'000 / header->sampling_rate);
    }
    frames_.emplace_back(frame);
  }
  if (frames_.empty()) throw std::invalid_argument("no MPEG layer III frames");
}

}  // namespace test_support
