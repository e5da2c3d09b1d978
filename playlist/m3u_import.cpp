#include "playlist/m3u_import.h"

#include <optional>
#include <utility>
#include <vector>

#include "app/station_row.h"
#include "app/text_helpers.h"
#include "playlist/file_dialogs.h"
#include "playlist/text_file.h"

namespace playlist {
namespace {

constexpr TextView kNamePrefix = u"#EXTINF:";
constexpr TextView kLinkPrefix = u"http";
/// More rows than anybody looks through; a file made of nothing but tiny entries must not fill the memory.
constexpr std::size_t kMostRows = 250'000;

/// The text between the first two commas of a line, or behind its only one; nothing without a comma.
std::optional<TextView> SecondPiece(TextView line) {
  const auto comma = line.find(u',');
  if (comma == TextView::npos) return std::nullopt;
  const TextView rest = line.substr(comma + 1);
  return rest.substr(0, rest.find(u','));
}

std::vector<controls::ListRow> RowsOf(TextView text) {
  std::vector<controls::ListRow> rows;
  // A line feed anywhere decides, so that the CR of a CR LF stays at the end of its line.
  LineReader lines(text, text.find(u'\n') != TextView::npos ? TextView(u"\n") : TextView(u"\r\n"));
  while (const auto line = lines.Next()) {
    if (app::StartsWith(*line, kNamePrefix)) {
      const auto name = SecondPiece(*line);
      if (!name || rows.size() == kMostRows) break;
      rows.emplace_back().cells[app::kNameCell] = *name;
    } else if (app::StartsWith(*line, kLinkPrefix) && !rows.empty()) {
      rows.back().cells[app::kLinkCell] = *line;
    }
  }
  return rows;
}

}  // namespace

M3uImport::M3uImport(Parts parts, platform::Dialogs& dialogs, platform::Files& files,
                     platform::TextConversion& conversion)
    : parts_(parts), dialogs_(dialogs), files_(files), conversion_(conversion) {
  subscriptions_ += parts_.Command5.Clicked.Subscribe([this] { Command5_Click(); });
}

void M3uImport::Command5_Click() {
  FileDialogParams params;
  params.title = u"M3U-Datei laden";
  params.filter = u"*.m3U|*.m3u";
  params.flags = platform::kOfnFileMustExist;
  const Text path = ShowOpenFileDialog(dialogs_, params);
  if (path.empty() || parts_.form.Closing()) return;
  ImportM3uFile(path);
}

void M3uImport::ImportM3uFile(const Text& path) {
  const auto answer = dialogs_.MessageBoxW(
      u"Sollen die Daten an die bestehende Liste angehängt werden?\r\n"
      u"Bei 'NEIN' wird die bestehende Liste zuvor geleert!",
      Text(), platform::kMbYesNoCancel | platform::kMbIconQuestion);
  if (parts_.form.Closing()) return;
  controls::ListView& target = parts_.lists.Active();
  if (answer == platform::MessageBoxAnswer::kNo) target.Clear();
  const auto text = ReadTextFile(files_, conversion_, path);
  if (text) target.AddRows(RowsOf(*text));
}

}  // namespace playlist
