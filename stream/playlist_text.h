#pragma once
// Remote playlists as text: what a server's answer is, its normal form (the lines of a PLS text), and the
// walk to one entry. Not for fetching the answer (stream/playlist_fetch.h) and not for playlist files.

#include <cstdint>
#include <optional>
#include <vector>

#include "stream/text_pieces.h"

namespace stream {

/// One entry of a playlist; a part that the walk did not find is empty.
struct PlaylistEntry {
  Text address;
  Text title;
};

/// The PLS lines that `response` (trimmed of blanks) represents; nothing when it is not a playlist. PLS text
/// is kept as it is, a bare address becomes a playlist of one entry, extended M3U is converted. Lines end in
/// CR LF exactly; bare line feeds belong to their line. Public references: PLS is an INI text with the keys
/// NumberOfEntries, FileN, TitleN, LengthN, Version; extended M3U pairs an "#EXTINF:seconds,title" line with
/// the address line after it.
std::optional<std::vector<Text>> PlaylistLinesFromResponse(TextView response);

/// The number that the first "NumberOfEntries" line announces; 0 when there is none or it is not a number.
std::int32_t AnnouncedEntries(const std::vector<Text>& lines);

/// The entry number `index` (from 0), both parts empty when it is outside the announced number. The walk
/// goes through the lines in order and stops at the entry's "File" line, so that a title is found only
/// when it comes before it; a value ends at a second "=".
PlaylistEntry FindPlaylistEntry(const std::vector<Text>& lines, std::int32_t index);

}  // namespace stream
