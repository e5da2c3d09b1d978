#pragma once
// Leaves of an answer's body what is sound: without a SHOUTcast server's blocks of titles. Not the
// connection.

#include <cstddef>
#include <string>
#include <string_view>

namespace platform::win32 {

class IcyFilter {
 public:
  /// `interval`: so many bytes of sound lie between blocks of titles; 0 is none.
  explicit IcyFilter(std::size_t interval) : interval_(interval), left_(interval) {}

  /// The sound in the next bytes of the body.
  std::string Sound(std::string_view body);

 private:
  std::size_t interval_;
  std::size_t left_;       ///< bytes of sound before the next block
  std::size_t block_ = 0;  ///< bytes left of the block
};

}  // namespace platform::win32
