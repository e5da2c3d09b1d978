#pragma once
// Counts the bytes of a stream with interleaved titles and separates audio, length bytes and block bytes. Not
// for what a block means (stream/block_rules.h).

#include <cstddef>
#include <cstdint>
#include <string>

namespace stream {

/// What one byte of the stream was.
enum class IcyByte {
  kAudio,
  kEmptyBlock,    ///< a length byte of 0: no block follows
  kBlockLength,   ///< a length byte that announces a block
  kBlockByte,     ///< a byte inside a block
  kBlockComplete  ///< the last byte of a block; Block() is the whole of it
};

/// After every `lMetaInt` audio bytes comes one length byte, then sixteen times its value in block bytes.
/// An interval of 0 or less makes every byte outside a block a length byte.
/// Public reference: the ICY protocol of SHOUTcast servers ("icy-metaint").
class IcyDemultiplexer {
 public:
  explicit IcyDemultiplexer(std::int32_t lMetaInt) : lMetaInt_(lMetaInt) {}

  IcyByte Take(std::byte value);

  /// Consumes as many of the next `most` bytes as are audio, whatever they are, and returns how many that
  /// were.
  std::size_t TakeAudio(std::size_t most);

  /// The bytes of the block collected so far, padding included; at most 4080. It starts again with the next
  /// announced block.
  [[nodiscard]] const std::string& Block() const { return block_; }

 private:
  std::int64_t lMetaInt_;
  std::int64_t audio_bytes_ = 0;
  std::int32_t remaining_ = 0;
  std::string block_;
};

}  // namespace stream
