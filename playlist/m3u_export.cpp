#include "playlist/m3u_export.h"

#include <vector>

#include "app/state/station.h"
#include "app/text/numbers.h"
#include "playlist/file_dialogs.h"
#include "playlist/text_file.h"

namespace playlist {
namespace {

std::vector<controls::RowId> RowsOf(const controls::ListView& list) {
  std::vector<controls::RowId> rows;
  for (const controls::ListRow& row : list.Rows()) rows.push_back(row.id);
  return rows;
}

}  // namespace

M3uExport::M3uExport(Parts parts, platform::Dialogs& dialogs, platform::Files& files,
                     platform::TextConversion& conversion, platform::MessageLoop& messages,
                     platform::Clock& clock, const app::Life& window)
    : parts_(parts),
      dialogs_(dialogs),
      files_(files),
      conversion_(conversion),
      messages_(messages),
      clock_(clock),
      window_(window) {
  subscriptions_ += parts_.Command4.Clicked.Subscribe([this] { Command4_Click(); });
}

void M3uExport::Command4_Click() {
  const Text path = AskForPath();
  if (path.empty() || window_.Ended()) return;
  const auto text = PlaylistText();
  if (!text || !WriteTextFile(files_, conversion_, path, *text)) return;
  dialogs_.MessageBoxW(u"M3U-Liste gespeichert unter: " + path, Text(), platform::kMbIconInformation);
}

Text M3uExport::AskForPath() const {
  FileDialogParams params;
  params.default_file_name = DefaultFileName();
  params.default_extension = u"m3u";
  params.filter = u"M3U-Datei (*.m3u)|*.m3u";
  // No question before an existing file is overwritten.
  params.flags = platform::kOfnReadOnly;
  return ShowSaveFileDialog(dialogs_, params);
}

Text M3uExport::DefaultFileName() const {
  const platform::DateTime now = clock_.LocalTime();
  const auto two = [](std::int32_t number) { return app::FormatNumber(number, 2); };
  return u"Radioliste_" + two(now.day) + u"_" + two(now.month) + u"_" + app::FormatNumber(now.year, 4) +
         two(now.hour) + two(now.minute) + two(now.second) + u".m3u";
}

std::optional<Text> M3uExport::PlaylistText() const {
  const controls::ListView& source = parts_.lists.Active();
  Text text = u"#EXTM3U\n";
  // The rows are named once, because they can be sorted and removed whenever messages are processed.
  for (const controls::RowId row : RowsOf(source)) {
    messages_.ProcessPendingMessages();
    if (window_.Ended()) return std::nullopt;
    if (messages_.GetAsyncKeyState(platform::kVkEscape) != 0) break;
    if (!source.Contains(row)) continue;
    text.append(u"#EXTINF:-1,").append(source.Cell(row, app::kNameCell)).append(u"\n");
    text.append(source.Cell(row, app::kLinkCell)).append(u"\n");
  }
  return text;
}

}  // namespace playlist
