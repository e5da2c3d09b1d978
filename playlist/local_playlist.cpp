#include "playlist/local_playlist.h"

#include <optional>

#include "app/text/text_helpers.h"
#include "app/text/text_utilities.h"
#include "playlist/text_file.h"

namespace playlist {

bool IsPlaylistFileName(platform::TextConversion& conversion, TextView link) {
  const std::optional<Text> extension = app::GetFileExt(conversion, link);
  return extension == u"M3U" || extension == u"TXT";
}

Text GetLocalPlaylistEntry(platform::Files& files, platform::TextConversion& conversion, const Text& path,
                           std::int32_t number) {
  const auto text = ReadTextFile(files, conversion, path);
  if (!text) return {};
  constexpr TextView kCrLf = u"\r\n";
  LineReader lines(*text, text->find(kCrLf) != Text::npos ? kCrLf : TextView(u"\n"));
  TextView entry;
  std::int32_t counter = 0;
  while (const auto line = lines.Next()) {
    if (!app::StartsWith(*line, u"http") && !files.PathFileExistsW(Text(*line))) continue;
    entry = *line;
    if (++counter == number) break;
  }
  return Text(entry);
}

}  // namespace playlist
