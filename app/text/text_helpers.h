#pragma once
// Small text operations that every room needs: trimming, splitting, joining.
// Not for code pages and paths (app/text/text_utilities.h) or numbers (app/text/numbers.h).

#include <span>
#include <vector>

#include "app/text/text.h"

namespace app {

/// `text` without its leading and trailing blanks (U+0020 only; tabs and line ends stay). A view into
/// `text`.
[[nodiscard]] TextView Trim(TextView text);

/// `text` without the blanks and control characters (U+0000 to U+0020, U+007F) at its ends. A view into
/// `text`.
[[nodiscard]] TextView TrimControls(TextView text);

/// The pieces of `text` between the occurrences of `separator`, empty pieces included. An empty text has no
/// pieces; an empty separator gives the whole text as one piece.
[[nodiscard]] std::vector<Text> Split(TextView text, TextView separator);

/// `text` up to its first line feed, which is not included. A view into `text`.
[[nodiscard]] TextView FirstLine(TextView text);

/// The pieces with `separator` between them.
[[nodiscard]] Text Join(std::span<const Text> pieces, TextView separator);

/// True when `text` begins with exactly `prefix`; letter case counts.
[[nodiscard]] constexpr bool StartsWith(TextView text, TextView prefix) { return text.starts_with(prefix); }

}  // namespace app
