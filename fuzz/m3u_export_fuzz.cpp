// Lets arbitrary things happen during "M3U erstellen...". The input's pieces between bytes 0x1E are texts,
// two for each row; the last piece is what happens while the rows are written, a byte for each row: nothing,
// the next row is removed, all rows are, Escape is pressed, the window closes. What must hold: the file holds
// exactly the rows that were there when their turn came, up to the Escape, in the code page and in order; a
// window that closes leaves the old file as it was, whole.

#include "app/state/station.h"
#include "fuzz/fuzz_input.h"
#include "platform/icu/text_conversion.h"
#include "playlist/m3u_export.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"

namespace {

using fuzz::Require;
using platform::Text;

const Text kPath = u"C:\\liste.m3u";
constexpr char kOldBytes[] = "old";

/// What is to be in the file, told step by step in another way than the export does it.
class Expected {
 public:
  Expected(controls::ListView& list, std::string_view happenings) : happenings_(happenings) {
    for (const controls::ListRow& row : list.Rows()) rows_.push_back(row.id);
  }

  /// Before the row at `at` is written.
  void Happen(controls::ListView& list, app::Life& window, test_support::FakeMessageLoop& messages) {
    const std::size_t at = turn_++;
    Require(at < rows_.size());
    switch (at < happenings_.size() ? happenings_[at] % 5 : 0) {
      case 1:
        list.RemoveRow(rows_[std::min(at + 1, rows_.size() - 1)]);
        break;
      case 2:
        list.Clear();
        break;
      case 3:
        messages.keys[platform::kVkEscape] = -1;
        return;
      case 4:
        return window.End();
      default:
        break;
    }
    if (!list.Contains(rows_[at])) return;
    text_ += u"#EXTINF:-1," + list.Cell(rows_[at], app::kNameCell) + u"\n" +
             list.Cell(rows_[at], app::kLinkCell) + u"\n";
  }
  [[nodiscard]] const Text& Rows() const { return text_; }

 private:
  std::string_view happenings_;
  std::vector<controls::RowId> rows_;
  std::size_t turn_ = 0;
  Text text_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string_view> pieces = fuzz::Pieces(fuzz::AsBytes(data, size), '\x1E');
  const std::string_view happenings = pieces.back();
  pieces.pop_back();
  app::Life window;
  controls::ListView full;
  controls::ListView filtered;
  filtered.SetVisible(false);
  for (std::size_t at = 0; at + 1 < pieces.size(); at += 2) {
    full.AddRow({.cells = {fuzz::AsText(pieces[at]), u"", fuzz::AsText(pieces[at + 1])}});
  }
  controls::CommandButton button;
  test_support::FakeDialogs dialogs;
  dialogs.chosen_file = kPath;
  test_support::MemoryFiles files;
  files.files[kPath] = kOldBytes;
  test_support::FakeMessageLoop messages;
  test_support::FakeClock clock;
  platform::icu::IcuTextConversion conversion;
  Expected expected(full, happenings);
  messages.on_pump = [&] { expected.Happen(full, window, messages); };
  playlist::M3uExport writing({{full, filtered}, button}, dialogs, files, conversion, messages, clock,
                              window);
  writing.Command4_Click();

  const std::string& file = files.files.at(kPath);
  if (window.Ended()) {
    Require(file == kOldBytes && dialogs.boxes.empty());
    return 0;
  }
  Require(dialogs.boxes.size() == 1 && files.writes == 1);
  const Text whole = u"#EXTM3U\n" + expected.Rows() + u"\r\n";
  Require(file == conversion.WideCharToMultiByte(platform::CodePage::kAnsi, whole));
  return 0;
}
