#include "stream/icy_demultiplexer.h"

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

}  // namespace stream
