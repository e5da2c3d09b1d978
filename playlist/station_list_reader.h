#pragma once
// Reads the stations from a list file: M3U, extended or not, and PLS, as players and directories write them.
// Not the import by the button, which has odd rules of its own (playlist/m3u_import.h), nor playlists from a
// server.

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
    kStream,  ///< the parts or variants of one stream (HLS), which are not stations
  };
  Kind kind = Kind::kList;
  /// M3U: in the order of the file; PLS: in the order of the numbers.
  std::vector<ListedStation> stations;
  bool is_cut = false;  ///< there were more than kMostStations
};

/// Whatever the bytes are, the time grows with their number only. The bytes are UTF-8 with or without a mark,
/// UTF-16 with one, or else in the ANSI code page; lines end at CR, LF or both.
///
/// M3U: a line that is an address is a station; its name is in the last "#EXTINF:" line since the previous
/// entry, after the first comma outside quotes. An entry that is not an address (a file of the writer's) is
/// left out; other lines with "#" are skipped. PLS, known by its first line: "FileN" and "TitleN" belong
/// together wherever they are; of equal keys the first one counts. "NumberOfEntries" is ignored. Key words
/// count in any letter case, blanks and control characters at the ends of lines, names and values are
/// dropped, control characters within a name become blanks, and a name that is too long is cut. Public
/// references: the formats as described for stream/playlist_text.h; HLS is RFC 8216.
[[nodiscard]] StationList ReadStationList(platform::TextConversion& conversion, std::string_view bytes);

}  // namespace playlist
