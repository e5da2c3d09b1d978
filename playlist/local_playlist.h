#pragma once
// Picks one entry from a playlist file on the disk.
// Not for playlists from a server, nor for the import of a whole file (playlist/m3u_import.h).

#include <cstdint>

#include "app/text/text.h"
#include "ports/files.h"
#include "ports/text_conversion.h"

namespace playlist {

/// Whether a link is the name of a playlist file on the disk (".m3u" or ".txt"), whether it exists or not.
[[nodiscard]] bool IsPlaylistFileName(platform::TextConversion& conversion, app::TextView link);

/// The entry of a playlist file with this number, counted from 1: a line that begins with "http" or names an
/// existing file or folder. The last entry when there is none with this number; empty when the file has no
/// entry or cannot be read.
[[nodiscard]] app::Text GetLocalPlaylistEntry(platform::Files& files, platform::TextConversion& conversion,
                                              const app::Text& path, std::int32_t number);

}  // namespace playlist
