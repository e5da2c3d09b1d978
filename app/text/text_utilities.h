#pragma once
// The program's procedures for UTF-8, multiple replacement and path texts.
// Not for splitting texts (app/text/text_helpers.h) or for numbers (app/text/numbers.h).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "app/text/text.h"
#include "ports/text_conversion.h"

namespace app {

/// True when the first `count` bytes hold at least one complete UTF-8 multi-byte sequence and no malformed
/// one; so plain ASCII gives false. A count beyond the end examines all bytes, a negative one gives false. A
/// sequence that the count cuts off ends the examination without failing it. Sequences of up to six bytes
/// count (RFC 2279); the bytes 254 and 255 are skipped like plain text.
[[nodiscard]] bool IsUTF8(std::span<const std::byte> bytes, std::int32_t count);
[[nodiscard]] bool IsUTF8(std::string_view bytes, std::int32_t count);

/// The text of bytes that may be UTF-8 or in the ANSI code page: IsUTF8 over all of them decides.
[[nodiscard]] Text Decoded(platform::TextConversion& conversion, std::string_view bytes);

// A byte string is a text whose characters represent one byte each, through the ANSI code page.

/// Decodes the bytes of a byte string as UTF-8; malformed parts become U+FFFD.
[[nodiscard]] Text Utf8ByteStringToText(platform::TextConversion& conversion, TextView byte_string);
/// The UTF-8 bytes of a text as a byte string.
[[nodiscard]] Text TextToUtf8ByteString(platform::TextConversion& conversion, TextView text);
[[nodiscard]] std::string TextToUtf8Bytes(platform::TextConversion& conversion, TextView text);
[[nodiscard]] Text Utf8BytesToText(platform::TextConversion& conversion, std::string_view bytes);

/// Multiple replacement. `pairs` holds search texts and replacements alternately; the pairs are applied in
/// order, each until its search text (case-sensitive) no longer occurs. A last search text without a
/// replacement uses that of the pair before it, or the empty text. An empty search text is never found. Never
/// returns for a replacement that contains its own search text: callers must not pass such a pair.
[[nodiscard]] Text ReplaceM(Text text, std::span<const Text> pairs);

/// Longest path, in 16-bit units, whose positions the two procedures below can count.
inline constexpr std::size_t kLongestPath = 32767;

/// The characters after the last "." of the whole path, in upper case; empty without a ".". A "." in a
/// folder's name counts too. Nothing for a path longer than kLongestPath: the step has failed.
[[nodiscard]] std::optional<Text> GetFileExt(platform::TextConversion& conversion, TextView Pfadname);

/// The characters after the last "\"; without one the whole path. Nothing for a path longer than
/// kLongestPath: the step has failed.
[[nodiscard]] std::optional<Text> GetFileFromPath(TextView Pfadname);

/// `path` in a form for the user to read: every separator becomes the one that occurs first.
[[nodiscard]] Text ReadablePath(Text path);

/// `path` with "\" appended unless that is its last character already; an empty path becomes "\".
[[nodiscard]] Text AddBackslash(Text path);

}  // namespace app
