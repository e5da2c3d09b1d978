#pragma once
// What the fuzz targets share: a promise that ends the run when it is broken, and text made from input.
// Not for the program itself.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "ports/text.h"

namespace fuzz {

inline void Require(bool promise) {
  if (!promise) std::abort();
}

/// The input as text: each byte a character, or, when the first byte is 0xFE, each following pair of bytes a
/// 16-bit unit.
inline platform::Text AsText(std::string_view input) {
  platform::Text text;
  if (!input.starts_with('\xFE')) {
    for (const char byte : input) text += static_cast<char16_t>(static_cast<unsigned char>(byte));
    return text;
  }
  for (std::size_t i = 1; i + 1 < input.size(); i += 2) {
    const auto high = static_cast<unsigned char>(input[i]);
    const auto low = static_cast<unsigned char>(input[i + 1]);
    text += static_cast<char16_t>((high << 8) | low);
  }
  return text;
}

inline std::string_view AsBytes(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace fuzz
