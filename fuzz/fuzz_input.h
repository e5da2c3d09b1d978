#pragma once
// What the fuzz targets share: a promise that ends the run when it is broken, and text made from input.
// Not for the program itself.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

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

/// The pieces of the input between occurrences of `separator`; at least one.
inline std::vector<std::string_view> Pieces(std::string_view input, char separator) {
  std::vector<std::string_view> pieces;
  while (true) {
    const std::size_t end = input.find(separator);
    pieces.push_back(input.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    input.remove_prefix(end + 1);
  }
}

/// Control characters of ASCII and of the code page's upper half.
inline bool IsControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F); }

inline bool HoldsControl(platform::TextView text) { return std::any_of(text.begin(), text.end(), IsControl); }

inline std::string_view AsBytes(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace fuzz
