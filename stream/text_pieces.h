#pragma once
// Small pure operations on text for the stream client's rules.
// Not for letters outside ASCII: the keywords compared here are all ASCII. Trimming, splitting, joining:
// app/text/text_helpers.h.

#include <cstddef>
#include <optional>

#include "app/text/text.h"

namespace stream {

using app::Text;
using app::TextView;

inline constexpr TextView kCrLf = u"\r\n";

/// The piece number `index` (from 0) of `text` split at every `separator`; nothing when there are fewer.
std::optional<TextView> PieceOf(TextView text, char16_t separator, std::size_t index);

/// `text` without any occurrence of `unwanted`, found from left to right.
Text RemoveAll(TextView text, TextView unwanted);

/// `text` with "A" to "Z" as "a" to "z".
Text LowerCase(TextView text);

bool EqualsIgnoringCase(TextView text, TextView other);
bool StartsWithIgnoringCase(TextView text, TextView prefix);
bool ContainsIgnoringCase(TextView text, TextView wanted);

}  // namespace stream
