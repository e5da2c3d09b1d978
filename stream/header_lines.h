#pragma once
// The raw header lines of a station's answer, and the lookup of single values in them.
// Not for asking the server (stream/header_query.h) and not for HTTP headers in general.

#include <cstdint>
#include <vector>

#include "stream/text_pieces.h"

namespace stream {

/// How many header names can be looked up, and the positions of those that the program itself uses.
inline constexpr std::int32_t kHeaderNameCount = 14;
inline constexpr std::int32_t kIcyName = 0;
inline constexpr std::int32_t kIcyUrl = 7;
inline constexpr std::int32_t kIcyMetaint = 9;
inline constexpr std::int32_t kContentType = 10;

/// The name with the given index: icy-name, ice-audio-info, icy-audio-info, icy-description, icy-br,
/// icy-sr, icy-genre, icy-url, icy-pub, icy-metaint, Content-Type, Server, Date, Expires. Empty outside 0
/// to 13.
TextView HeaderName(std::int32_t eQueryData);

/// The values of every line with that name (any case, nothing before it), joined with ",". A value is trimmed
/// and ends at its first colon; that of icy-url at its second, which preserves "http://host". Empty for an
/// index outside the table, and when a line with that name lacks a piece that is needed.
Text HeaderValues(const std::vector<Text>& lines, std::int32_t eQueryData);

}  // namespace stream
