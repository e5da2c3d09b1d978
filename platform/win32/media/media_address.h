#pragma once
// What kind of thing an item's address names, and its form without what does not belong to it. Not the
// opening.

#include <cstdint>

#include "ports/text.h"

namespace platform::win32 {

enum class AddressKind : std::uint8_t { kNone, kWeb, kFile, kOther };

struct MediaAddress {
  AddressKind kind = AddressKind::kNone;  ///< kNone: no text, or one with a NUL; kFile: a file's name
  Text text;
};

/// Blanks and control characters (U+0000 to U+0020, U+007F) at the ends are dropped.
MediaAddress ReadAddress(const Text& untrimmed);

}  // namespace platform::win32
