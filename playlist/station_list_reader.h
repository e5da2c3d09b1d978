#pragma once
// Reads the stations out of a list file: M3U, extended or not, and PLS, as players and directories write
// them. Not the described import with its odd rules (playlist/m3u_import.h), not playlists from a server.

#include <cstddef>
#include <string_view>
#include <vector>

#include "app/text/text.h"
#include "ports/text_conversion.h"

namespace playlist {

/// The largest file that is read, in bytes; more entries than are read; the longest name, in 16-bit units.
inline constexpr std::size_t kLargestStationList = std::size_t{16} << 20U;
inline constexpr std::size_t kMostStations = 100'000;
inline constexpr std::size_t kLongestStationName = 500;

struct ListedStation {
  app::Text name;  ///< never empty: where the file gives none, the link's host
  app::Text link;  ///< IsWebAddress
  friend bool operator==(const ListedStation&, const ListedStation&) = default;
};

struct StationList {
  enum class Kind {
    kList,
    kEmpty,   ///< nothing but blanks
    kStream,  ///< the parts or variants of one stream (HLS), which are no stations
  };
  Kind kind = Kind::kList;
  /// M3U: in the order of the file; PLS: in the order of the numbers.
  std::vector<ListedStation> stations;
  bool is_cut = false;  ///< there were more than kMostStations
};

/// Whatever the bytes are, this ends in a time that grows with their number only. They are UTF-8 with or
/// without a mark, UTF-16 with one, or else the ANSI code page; lines end at CR, LF or both.
///
/// M3U: a line that is an address is a station; its name stands in the last "#EXTINF:" line since the line of
/// the entry before, behind the first comma outside quotes. What is no address (a file of the writer's) is an
/// entry that is left out, other lines with "#" are passed over.
/// PLS, known by its first line: "FileN" and "TitleN" belong together wherever they stand; of the same key
/// the first one counts. "NumberOfEntries" is not asked. Key words count in any letter case, blanks and
/// control characters at the ends of lines, names and values are dropped, control characters within a name
/// become blanks, and a name that is too long is cut. Public references: the formats as described for
/// stream/playlist_text.h; HLS is RFC 8216.
[[nodiscard]] StationList ReadStationList(platform::TextConversion& conversion, std::string_view bytes);

}  // namespace playlist
