#pragma once
// How many bytes a recorder asks of its stream at a time. Not for reading them.

#include <algorithm>
#include <cstddef>

#include "stream/record_options.h"

namespace stream {

/// 512 bytes by the usual rule. Otherwise twice as many after each read that came back full, up to 32 KiB,
/// and 512 again after one that did not: a stream that comes faster than it is read costs fewer calls for its
/// bytes, and one that comes as it is played is on the disk as soon as before.
class ReadSize {
 public:
  static constexpr std::size_t kUsual = 512;
  static constexpr std::size_t kLargest = std::size_t{32} * 1024;

  explicit ReadSize(RecordOptions::Writes writes)
      : largest_(writes == RecordOptions::Writes::kUsual ? kUsual : kLargest) {}

  [[nodiscard]] std::size_t Largest() const { return largest_; }
  /// The size of the next read.
  [[nodiscard]] std::size_t Next() const { return next_; }
  /// The read of that size brought `count` bytes.
  void Came(std::size_t count) { next_ = count < next_ ? kUsual : std::min(next_ * 2, largest_); }

 private:
  std::size_t largest_;
  std::size_t next_ = kUsual;
};

}  // namespace stream
