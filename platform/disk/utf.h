#pragma once
// Characters in the encodings UTF-8 and UTF-16, one at a time. Not for what becomes of bytes or units that
// are none: each caller has a rule of its own for them.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "ports/text.h"

namespace platform::disk {

struct DecodedCharacter {
  char32_t character;
  std::size_t size;  ///< in bytes or in units
};

/// Half of a pair in UTF-16: no character by itself.
constexpr bool IsSurrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }

/// The character at the beginning of `bytes`, which are not empty; nothing when they do not form one.
/// A surrogate is decoded like a character. Public reference: RFC 3629.
std::optional<DecodedCharacter> DecodeUtf8(std::string_view bytes);

/// The character at the beginning of `units`, which are not empty; a surrogate without its partner is itself.
DecodedCharacter DecodeUtf16(TextView units);

void AppendUtf8(std::string& bytes, char32_t character);
void AppendUtf16(Text& units, char32_t character);

}  // namespace platform::disk
