#include "stream/icy_demultiplexer.h"

#include <algorithm>

namespace stream {

IcyByte IcyDemultiplexer::Take(std::byte value) {
  if (remaining_ > 0) {
    block_ += static_cast<char>(value);
    --remaining_;
    return remaining_ > 0 ? IcyByte::kBlockByte : IcyByte::kBlockComplete;
  }
  if (audio_bytes_ < lMetaInt_) {
    ++audio_bytes_;
    return IcyByte::kAudio;
  }
  audio_bytes_ = 0;
  if (value == std::byte{0}) return IcyByte::kEmptyBlock;
  constexpr std::int32_t kLengthUnit = 16;
  remaining_ = std::to_integer<std::int32_t>(value) * kLengthUnit;
  block_.clear();
  return IcyByte::kBlockLength;
}

std::size_t IcyDemultiplexer::TakeAudio(std::size_t most) {
  if (remaining_ > 0 || audio_bytes_ >= lMetaInt_) return 0;
  const auto up_to_block = static_cast<std::uint64_t>(lMetaInt_ - audio_bytes_);
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(most, up_to_block));
  audio_bytes_ += static_cast<std::int64_t>(count);
  return count;
}

}  // namespace stream
