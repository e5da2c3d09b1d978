#include "playlist/m3u_import.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "app/state/station.h"
#include "app/state/status_sentences.h"
#include "app/text/numbers.h"
#include "app/text/text_helpers.h"
#include "playlist/file_dialogs.h"
#include "playlist/text_file.h"

namespace playlist {
namespace {

constexpr TextView kNamePrefix = u"#EXTINF:";
constexpr TextView kLinkPrefix = u"http";
/// More rows than anybody looks through; a file made of nothing but tiny entries must not fill the memory.
constexpr std::size_t kMostRows = 250'000;

/// The text between the first two commas of a line, or after its only one; nothing without a comma.
std::optional<TextView> SecondPiece(TextView line) {
  const auto comma = line.find(u',');
  if (comma == TextView::npos) return std::nullopt;
  const TextView rest = line.substr(comma + 1);
  return rest.substr(0, rest.find(u','));
}

/// The result of reading the lines of a file.
struct Entries {
  std::vector<controls::ListRow> rows;
  bool comma_missing = false;  ///< in a "#EXTINF:" line, which ended the import
};

Entries EntriesOf(TextView text) {
  Entries entries;
  std::vector<controls::ListRow>& rows = entries.rows;
  // A line feed anywhere decides, so that the CR of a CR LF stays at the end of its line.
  LineReader lines(text, text.find(u'\n') != TextView::npos ? TextView(u"\n") : TextView(u"\r\n"));
  while (const auto line = lines.Next()) {
    if (app::StartsWith(*line, kNamePrefix)) {
      const auto name = SecondPiece(*line);
      entries.comma_missing = !name;
      if (!name || rows.size() == kMostRows) break;
      rows.emplace_back().cells.Set(app::kNameCell, Text(*name));
    } else if (app::StartsWith(*line, kLinkPrefix) && !rows.empty()) {
      rows.back().cells.Set(app::kLinkCell, Text(*line));
    }
  }
  return entries;
}

/// The byte order mark of UTF-16 as two characters of the code page, or the zero byte of a Latin letter.
bool LooksLikeUtf16(TextView text) {
  const TextView start = text.substr(0, 2);
  return start == u"\u00FF\u00FE" || start == u"\u00FE\u00FF" || start.find(u'\0') != TextView::npos;
}

/// Why there was no entry in a text that could be read.
TextView ReasonForNone(platform::TextConversion& conversion, TextView text, const Entries& entries) {
  const auto begin = text.find_first_not_of(u" \t\r\n");
  if (begin == TextView::npos) return app::sentences::kImportEmpty;
  if (LooksLikeUtf16(text)) return app::sentences::kImportUtf16;
  constexpr TextView kPlsHeader = u"[playlist]";
  if (conversion.CharLowerW(text.substr(begin, kPlsHeader.size())) == kPlsHeader) {
    return app::sentences::kImportPls;
  }
  return entries.comma_missing ? app::sentences::kImportNoComma : app::sentences::kImportNoEntries;
}

Text FileName(const Text& path) { return path.substr(path.find_last_of(u"\\/") + 1); }

}  // namespace

M3uImport::M3uImport(Parts parts, platform::Dialogs& dialogs, platform::Files& files,
                     platform::TextConversion& conversion, app::Notices& notices, Actions actions,
                     const app::Life& window)
    : parts_(parts),
      dialogs_(dialogs),
      files_(files),
      conversion_(conversion),
      notices_(notices),
      actions_(std::move(actions)),
      window_(window) {
  subscriptions_ += parts_.Command5.Clicked.Subscribe([this] { Command5_Click(); });
}

void M3uImport::Command5_Click() {
  FileDialogParams params;
  params.title = u"M3U-Datei laden";
  params.filter = u"*.m3U|*.m3u";
  params.flags = platform::kOfnFileMustExist;
  const Text path = ShowOpenFileDialog(dialogs_, params);
  if (path.empty() || window_.Ended()) return;
  ImportM3uFile(path);
}

void M3uImport::ImportM3uFile(const Text& path) {
  const auto answer = dialogs_.MessageBoxW(
      u"Sollen die Daten an die bestehende Liste angehängt werden?\r\n"
      u"Bei 'NEIN' wird die bestehende Liste zuvor geleert!",
      Text(), platform::kMbYesNoCancel | platform::kMbIconQuestion);
  if (window_.Ended()) return;
  controls::ListView& target = parts_.lists.Active();
  if (answer == platform::MessageBoxAnswer::kNo) {
    if (&target == &parts_.lists.full) actions_.full_list_is_emptied();
    target.Clear();
  }
  const auto text = ReadTextFile(files_, conversion_, path);
  if (!text) return notices_.Notify(app::sentences::kImportUnreadable, {FileName(path)});
  Entries entries = EntriesOf(*text);
  if (entries.rows.empty()) {
    return notices_.Notify(ReasonForNone(conversion_, *text, entries), {FileName(path)});
  }
  const Text count = app::FormatNumber(static_cast<std::int64_t>(entries.rows.size()));
  const std::size_t first = target.Count();
  target.AddRows(std::move(entries.rows));
  target.EnsureVisible(target.RowAt(first));
  const bool can_be_saved = &target == &parts_.lists.full;
  notices_.Notify(can_be_saved ? app::sentences::kImported : app::sentences::kImportedIntoView, {count});
}

}  // namespace playlist
