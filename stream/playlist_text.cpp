#include "stream/playlist_text.h"

#include <cstddef>

#include "app/text/numbers.h"
#include "app/text/text_helpers.h"

namespace stream {
namespace {

Text OneEntryPls(TextView address) {
  Text text = u"[playlist]\r\nNumberOfEntries = 1\r\nFile1=";
  text += address;
  text += u"\r\nTitle1=unknown\r\nLength1 = -1\r\nVersion = 2";
  return text;
}

// The part after the first comma of an "#EXTINF:-1,Title" line, the whole line when it has none.
TextView ExtInfTitle(TextView line) {
  const std::size_t comma = line.find(u',');
  return app::Trim(comma == TextView::npos ? line : line.substr(comma + 1));
}

// The lines are taken in pairs after the first one. What would be beyond the last line is left out, but its
// entry is counted all the same.
Text PlsFromExtendedM3u(TextView response) {
  const std::vector<Text> lines = app::Split(response, kCrLf);
  const auto entries =
      static_cast<std::size_t>(app::RoundTiesToEven(static_cast<double>(lines.size() - 1) / 2));
  Text pls =
      u"[playlist]\r\nNumberOfEntries = " + app::FormatNumber(static_cast<std::int64_t>(entries)) + u"\r\n";
  for (std::size_t i = 1; i <= entries; ++i) {
    const Text number = app::FormatNumber(static_cast<std::int64_t>(i));
    const std::size_t info = 2 * i - 1;
    if (info + 1 < lines.size()) {
      pls += u"File" + number + u"=" + Text(app::Trim(lines[info + 1])) + u"\r\n";
    }
    if (info < lines.size()) pls += u"Title" + number + u"=" + Text(ExtInfTitle(lines[info])) + u"\r\n";
    pls += u"Length" + number + u" = -1\r\n";
  }
  return pls + u"Version = 2";
}

// The value of a "key=value" line: up to a second "=", trimmed. Nothing when the key is another one.
std::optional<TextView> ValueOf(TextView line, TextView key) {
  const std::optional<TextView> value = PieceOf(line, u'=', 1);
  if (!value) return std::nullopt;
  if (!EqualsIgnoringCase(app::Trim(*PieceOf(line, u'=', 0)), key)) return std::nullopt;
  return app::Trim(*value);
}

}  // namespace

std::optional<std::vector<Text>> PlaylistLinesFromResponse(TextView response) {
  response = app::Trim(response);
  if (StartsWithIgnoringCase(response, u"[playlist]")) return app::Split(response, kCrLf);
  if (StartsWithIgnoringCase(response, u"http://") || StartsWithIgnoringCase(response, u"https://")) {
    return app::Split(OneEntryPls(response), kCrLf);
  }
  if (StartsWithIgnoringCase(response, u"#extm3u")) return app::Split(PlsFromExtendedM3u(response), kCrLf);
  return std::nullopt;
}

std::int32_t AnnouncedEntries(const std::vector<Text>& lines) {
  for (const Text& line : lines) {
    if (const auto value = ValueOf(line, u"numberofentries")) return app::ToInt32(*value).value_or(0);
  }
  return 0;
}

PlaylistEntry FindPlaylistEntry(const std::vector<Text>& lines, std::int32_t index) {
  PlaylistEntry entry;
  if (index < 0 || index >= AnnouncedEntries(lines)) return entry;
  const Text number = app::FormatNumber(std::int64_t{index} + 1);
  for (const Text& line : lines) {
    if (const auto address = ValueOf(line, u"file" + number)) {
      entry.address = *address;
      return entry;
    }
    if (const auto title = ValueOf(line, u"title" + number)) entry.title = *title;
  }
  return entry;
}

}  // namespace stream
