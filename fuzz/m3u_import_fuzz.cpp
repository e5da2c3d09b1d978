// Feeds arbitrary files to "M3U laden...", and what it made of them to "M3U erstellen..." and back. The first
// byte chooses the answer to the question and whether rows are there already. What must hold: one notice each
// time; no more rows than "#EXTINF:" lines; a name has no comma and no line feed, a link begins with "http"
// or is missing; rows that were there stay unless the answer was No; and what was exported gives the same
// rows when it is imported again.

#include "app/state/station.h"
#include "fuzz/fuzz_input.h"
#include "platform/icu/text_conversion.h"
#include "playlist/m3u_export.h"
#include "playlist/m3u_import.h"
#include "tests/support/fake_notices.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"

namespace {

using fuzz::Require;
using platform::MessageBoxAnswer;
using platform::Text;

const Text kPath = u"C:\\liste.m3u";

struct Rig {
  Rig() {
    filtered.SetVisible(false);
    dialogs.chosen_file = kPath;
  }

  app::Life window;
  controls::ListView full;
  controls::ListView filtered;
  controls::CommandButton button;
  test_support::FakeDialogs dialogs;
  test_support::FakeNotices notices;
  test_support::MemoryFiles files;
  test_support::FakeMessageLoop messages;
  test_support::FakeClock clock;
  platform::icu::IcuTextConversion conversion;
  playlist::M3uImport import{
      {{full, filtered}, button}, dialogs, files, conversion, notices, {[] {}}, window};
  playlist::M3uExport writing{
      {{full, filtered}, button}, dialogs, files, conversion, messages, clock, window};
};

std::size_t CountOf(std::string_view bytes, std::string_view word) {
  std::size_t count = 0;
  for (auto at = bytes.find(word); at != std::string_view::npos; at = bytes.find(word, at + 1)) ++count;
  return count;
}

void CheckRow(const controls::ListRow& row) {
  Require(row.cells[app::kNameCell].find_first_of(u",\n") == Text::npos);
  const Text& link = row.cells[app::kLinkCell];
  Require(link.empty() || link.starts_with(u"http"));
  Require(link.find(u'\n') == Text::npos);
}

bool SameCells(const controls::ListView& one, const controls::ListView& other) {
  return std::equal(
      one.Rows().begin(), one.Rows().end(), other.Rows().begin(), other.Rows().end(),
      [](const controls::ListRow& row, const controls::ListRow& twin) { return row.cells == twin.cells; });
}

void ExportAndImport(Rig& rig) {
  rig.writing.Command4_Click();
  const std::string exported = rig.files.files.at(kPath);
  Require(exported.starts_with("#EXTM3U\n") && exported.ends_with("\r\n"));
  Rig again;
  again.files.files[kPath] = exported;
  again.import.ImportM3uFile(kPath);
  Require(SameCells(rig.full, again.full));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  constexpr std::array kAnswers = {MessageBoxAnswer::kYes, MessageBoxAnswer::kNo, MessageBoxAnswer::kCancel};
  const auto answer = kAnswers[data[0] % kAnswers.size()];
  const bool has_row = data[0] >= 128;
  const std::string_view file = fuzz::AsBytes(data + 1, size - 1);
  Rig rig;
  rig.files.files[kPath] = std::string(file);
  rig.dialogs.answers = {answer};
  if (has_row) rig.full.AddRow({.cells = {u"Radio A", u"", u"http://a/"}});
  rig.import.ImportM3uFile(kPath);
  Require(rig.dialogs.boxes.size() == 1 && rig.notices.notices.size() == 1);
  const std::size_t kept = has_row && answer != MessageBoxAnswer::kNo ? 1 : 0;
  Require(rig.full.Count() >= kept && rig.full.Count() - kept <= CountOf(file, "#EXTINF:"));
  for (const controls::ListRow& row : rig.full.Rows()) CheckRow(row);
  ExportAndImport(rig);
  return 0;
}
