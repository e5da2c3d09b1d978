#include "playlist/m3u_import.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/state/status_sentences.h"
#include "playlist/m3u_export.h"
#include "tests/support/fake_notices.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/plain_text_conversion.h"

namespace playlist {
namespace {

using app::Text;
using platform::MessageBoxAnswer;
using Entries = std::vector<std::pair<Text, Text>>;

const Text kImported = u"C:\\Musik\\liste.m3u";

class M3uImportTest : public testing::Test {
 protected:
  M3uImportTest() { filtered_.SetVisible(false); }

  static Entries EntriesOf(const controls::ListView& list) {
    Entries entries;
    for (const auto& row : list.Rows()) entries.emplace_back(row.cells[0], row.cells[2]);
    return entries;
  }
  Entries Imported(const std::string& bytes, MessageBoxAnswer answer = MessageBoxAnswer::kYes) {
    files_.files[kImported] = bytes;
    dialogs_.answers = {answer};
    import_.ImportM3uFile(kImported);
    return EntriesOf(full_);
  }
  void ExpectNotice(app::TextView sentence, const Text& argument) {
    EXPECT_EQ(notices_.notices,
              (std::vector<test_support::FakeNotices::Notice>{{Text(sentence), {argument}}}));
    notices_.notices.clear();
  }
  void AddStation(controls::ListView& list, const Text& name) {
    controls::ListRow row;
    row.cells.Set(0, name);
    list.AddRow(row);
  }

  app::Life window_;
  controls::ListView full_;
  controls::ListView filtered_;
  controls::CommandButton Command5_;
  test_support::FakeDialogs dialogs_;
  test_support::FakeNotices notices_;
  test_support::MemoryFiles files_;
  test_support::PlainTextConversion conversion_;
  int emptied_ = 0;
  const M3uImport::Actions actions_{.full_list_is_emptied = [this] {
    ++emptied_;
    EXPECT_GT(full_.Count(), 0U) << "the rows are still there";
  }};
  M3uImport import_{{.lists = {full_, filtered_}, .Command5 = Command5_},
                    dialogs_,
                    files_,
                    conversion_,
                    notices_,
                    actions_,
                    window_};
};

TEST_F(M3uImportTest, TheButtonAsksForAnExistingM3uFile) {
  Command5_.Click();
  ASSERT_EQ(dialogs_.file_dialogs.size(), 1U);
  const auto& record = dialogs_.file_dialogs[0];
  EXPECT_EQ(record.title, u"M3U-Datei laden");
  EXPECT_EQ(record.filter, Text(u"*.m3U\0*.m3u\0\0", 13));
  EXPECT_EQ(record.flags, 4096U);
  EXPECT_EQ(record.file, Text(8120, u'\0'));
  EXPECT_EQ(record.initial_folder, u"");
}

TEST_F(M3uImportTest, CancellingTheDialogEndsWithoutAQuestion) {
  Command5_.Click();
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(M3uImportTest, TheChosenFileIsImported) {
  files_.files[kImported] = "#EXTINF:-1,Eins\nhttp://1\n";
  dialogs_.chosen_file = kImported;
  dialogs_.answers = {MessageBoxAnswer::kYes};
  Command5_.Click();
  EXPECT_EQ(EntriesOf(full_), (Entries{{u"Eins", u"http://1"}}));
}

TEST_F(M3uImportTest, AsksWhetherToAppend) {
  Imported("");
  ASSERT_EQ(dialogs_.boxes.size(), 1U);
  EXPECT_EQ(dialogs_.boxes[0],
            (test_support::FakeDialogs::Box{u"Sollen die Daten an die bestehende Liste angehängt werden?\r\n"
                                            u"Bei 'NEIN' wird die bestehende Liste zuvor geleert!",
                                            u"", 35}));
}

TEST_F(M3uImportTest, CancelAppendsExactlyAsYesDoes) {
  AddStation(full_, u"Alt");
  const Entries expected = {{u"Alt", u""}, {u"Eins", u"http://1"}};
  EXPECT_EQ(Imported("#EXTINF:-1,Eins\nhttp://1\n", MessageBoxAnswer::kCancel), expected);
  full_.Clear();
  AddStation(full_, u"Alt");
  EXPECT_EQ(Imported("#EXTINF:-1,Eins\nhttp://1\n", MessageBoxAnswer::kYes), expected);
}

TEST_F(M3uImportTest, NoEmptiesTheTargetListFirst) {
  AddStation(full_, u"Alt");
  EXPECT_EQ(Imported("#EXTINF:-1,Eins\nhttp://1\n", MessageBoxAnswer::kNo),
            (Entries{{u"Eins", u"http://1"}}));
}

TEST_F(M3uImportTest, WithAFilterViewActiveTheFullListIsNotTouched) {
  AddStation(full_, u"Alt");
  AddStation(filtered_, u"Gefiltert");
  filtered_.SetVisible(true);
  Imported("#EXTINF:-1,Eins\nhttp://1\n", MessageBoxAnswer::kNo);
  EXPECT_EQ(EntriesOf(full_), (Entries{{u"Alt", u""}}));
  EXPECT_EQ(EntriesOf(filtered_), (Entries{{u"Eins", u"http://1"}}));
}

TEST_F(M3uImportTest, AnImportedRowHasOnlyNameAndLink) {
  Imported("#EXTINF:-1,Eins\nhttp://1\n");
  const controls::ListRow& row = full_.Rows().front();
  EXPECT_EQ(row.cells[1], u"");
  EXPECT_EQ(row.cells[3], u"");
  EXPECT_EQ(row.cells[4], u"");
  EXPECT_EQ(row.cells[5], u"");
  EXPECT_EQ(row.icon, -1);
}

TEST_F(M3uImportTest, TheNameIsWhatStandsBetweenTheFirstTwoCommas) {
  EXPECT_EQ(Imported("#EXTINF:123,Name,extra\n"), (Entries{{u"Name", u""}}));
}

TEST_F(M3uImportTest, TheNameIsNotTrimmed) {
  EXPECT_EQ(Imported("#EXTINF:-1,  A B \n#EXTINF:,\n"), (Entries{{u"  A B ", u""}, {u"", u""}}));
}

TEST_F(M3uImportTest, LinesWithCrLfKeepTheirCarriageReturn) {
  EXPECT_EQ(Imported("#EXTM3U\r\n#EXTINF:-1,Eins\r\nhttp://1\r\n#EXTINF:-1,Zwei,x\r\n"),
            (Entries{{u"Eins\r", u"http://1\r"}, {u"Zwei", u""}}));
}

TEST_F(M3uImportTest, AFileWithoutLineFeedsIsOneLine) {
  EXPECT_EQ(Imported("#EXTINF:-1,Eins\rhttp://1\r"), (Entries{{u"Eins\rhttp://1\r", u""}}));
}

TEST_F(M3uImportTest, ALaterLinkBeforeTheNextNameOverwritesTheEarlierOne) {
  EXPECT_EQ(Imported("#EXTINF:-1,Eins\nhttp://1\nhttps://2\n#EXTINF:-1,Zwei\n"),
            (Entries{{u"Eins", u"https://2"}, {u"Zwei", u""}}));
}

TEST_F(M3uImportTest, LinksThatDoNotBeginWithHttpAreNotTaken) {
  EXPECT_EQ(Imported("#EXTINF:-1,Eins\nmms://1\nC:\\a.mp3\nHTTP://1\n http://1\n\n#http\n"),
            (Entries{{u"Eins", u""}}));
}

TEST_F(M3uImportTest, AFileWithOnlyHttpLinesImportsNothing) {
  EXPECT_EQ(Imported("http://1\nhttp://2\n"), Entries{});
}

TEST_F(M3uImportTest, ALinkBeforeTheFirstNameIsIgnored) {
  AddStation(full_, u"Alt");
  EXPECT_EQ(Imported("http://0\n#EXTINF:-1,Eins\nhttp://1\n"),
            (Entries{{u"Alt", u""}, {u"Eins", u"http://1"}}));
}

TEST_F(M3uImportTest, TheNamePrefixCountsInItsLetterCaseOnly) {
  EXPECT_EQ(Imported("#extinf:-1,Eins\n#EXTINF -1,Zwei\n #EXTINF:-1,Drei\n"), Entries{});
}

TEST_F(M3uImportTest, ANameLineWithoutACommaEndsTheImportAndKeepsTheRowsBefore) {
  EXPECT_EQ(Imported("#EXTINF:-1,Eins\nhttp://1\n#EXTINF:-1\nhttp://2\n#EXTINF:-1,Drei\nhttp://3\n"),
            (Entries{{u"Eins", u"http://1"}}));
}

TEST_F(M3uImportTest, TheFileIsReadInTheAnsiCodePage) {
  EXPECT_EQ(Imported("#EXTINF:-1,K\xF6ln \x80\nhttp://\xC3\xB6\n"), (Entries{{u"Köln €", u"http://Ã¶"}}));
}

TEST_F(M3uImportTest, AFileThatCannotBeReadEndsWithANoticeOnly) {
  AddStation(full_, u"Alt");
  dialogs_.answers = {MessageBoxAnswer::kYes};
  import_.ImportM3uFile(u"C:\\gibt es nicht.m3u");
  EXPECT_EQ(EntriesOf(full_), (Entries{{u"Alt", u""}}));
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
  ExpectNotice(app::sentences::kImportUnreadable, u"gibt es nicht.m3u");
}

TEST_F(M3uImportTest, TheFirstNewRowIsScrolledIntoViewAndNotSelected) {
  AddStation(full_, u"Alt");
  controls::RowId shown = controls::RowId::kNone;
  const auto subscription = full_.ScrollWanted.Subscribe([&](controls::RowId row) { shown = row; });
  Imported("#EXTINF:-1,Eins\nhttp://1\n#EXTINF:-1,Zwei\n");
  EXPECT_EQ(shown, full_.RowAt(1));
  EXPECT_EQ(full_.SelectedRow(), controls::RowId::kNone);
}

TEST_F(M3uImportTest, ANoticeSaysHowManyRowsCameAndThatTheyAreNotSaved) {
  Imported("#EXTINF:-1,Eins\nhttp://1\n#EXTINF:-1,Zwei\n#EXTINF:-1\n");
  ExpectNotice(app::sentences::kImported, u"2");
  filtered_.SetVisible(true);
  Imported("#EXTINF:-1,Eins\nhttp://1\n");
  ExpectNotice(app::sentences::kImportedIntoView, u"1");
}

TEST_F(M3uImportTest, ANoticeSaysWhyNoRowCame) {
  const std::vector<std::pair<std::string, app::TextView>> files = {
      {"", app::sentences::kImportEmpty},
      {" \r\n\t", app::sentences::kImportEmpty},
      {"http://1\n", app::sentences::kImportNoEntries},
      {"#EXTM3U\r#EXTINF:-1,Eins\rhttp://1\r", app::sentences::kImportNoEntries},
      {"#EXTM3U\n#EXTINF:-1\nhttp://1\n#EXTINF:-1,Zwei\n", app::sentences::kImportNoComma},
      {"\r\n[PlayList]\nFile1=http://1\n", app::sentences::kImportPls},
      {std::string("\xFF\xFE#\0E\0", 6), app::sentences::kImportUtf16},
      {std::string("\xFE\xFF\0#\0E", 6), app::sentences::kImportUtf16},
      {std::string("#\0E\0", 4), app::sentences::kImportUtf16},
      {std::string("\0#\0E", 4), app::sentences::kImportUtf16}};
  for (const auto& [bytes, sentence] : files) {
    EXPECT_EQ(Imported(bytes), Entries{});
    ExpectNotice(sentence, u"liste.m3u");
  }
}

TEST_F(M3uImportTest, OnlyTheFullListsEmptyingIsReported) {
  AddStation(full_, u"Alt");
  AddStation(filtered_, u"Gefiltert");
  Imported("", MessageBoxAnswer::kYes);
  EXPECT_EQ(emptied_, 0);
  Imported("", MessageBoxAnswer::kNo);
  EXPECT_EQ(emptied_, 1);
  filtered_.SetVisible(true);
  Imported("", MessageBoxAnswer::kNo);
  EXPECT_EQ(emptied_, 1);
}

TEST_F(M3uImportTest, NoEmptiesTheListAlsoWhenTheFileCannotBeRead) {
  AddStation(full_, u"Alt");
  dialogs_.answers = {MessageBoxAnswer::kNo};
  import_.ImportM3uFile(u"C:\\gibt es nicht.m3u");
  EXPECT_EQ(full_.Count(), 0U);
}

TEST_F(M3uImportTest, ABinaryFileDoesNoHarm) {
  std::string bytes;
  for (int number = 0; number < 100000; ++number) bytes.push_back(static_cast<char>(number * 7919 >> 3));
  EXPECT_EQ(Imported(bytes), Entries{});
  EXPECT_EQ(Imported(std::string("#EXTINF:\0,\0\x81\n", 13)), (Entries{{Text(u"\0\x81", 2), u""}}));
}

TEST_F(M3uImportTest, AnEmptyFileImportsNothing) { EXPECT_EQ(Imported(""), Entries{}); }

TEST_F(M3uImportTest, MoreThanAQuarterOfAMillionEntriesAreCutThere) {
  std::string bytes;
  for (int number = 0; number < 250'002; ++number) bytes += "#EXTINF:,\n";
  files_.files[kImported] = bytes;
  import_.ImportM3uFile(kImported);
  EXPECT_EQ(full_.Count(), 250'000U);
}

TEST_F(M3uImportTest, AWindowThatClosesDuringTheQuestionKeepsItsRows) {
  AddStation(full_, u"Alt");
  dialogs_.on_box = [this] { window_.End(); };
  EXPECT_EQ(Imported("#EXTINF:-1,Eins\n", MessageBoxAnswer::kNo), (Entries{{u"Alt", u""}}));
}

TEST_F(M3uImportTest, TheListVisibleAfterTheQuestionIsTheTarget) {
  dialogs_.on_box = [this] { filtered_.SetVisible(true); };
  Imported("#EXTINF:-1,Eins\n");
  EXPECT_EQ(full_.Count(), 0U);
  EXPECT_EQ(filtered_.Count(), 1U);
}

TEST_F(M3uImportTest, RowsAreAnnouncedInOnePiece) {
  std::vector<std::pair<std::size_t, std::size_t>> announced;
  const auto subscription = full_.RowsAdded.Subscribe(
      [&](std::size_t first, std::size_t count) { announced.emplace_back(first, count); });
  AddStation(full_, u"Alt");
  Imported("#EXTINF:-1,Eins\nhttp://1\n#EXTINF:-1,Zwei\nhttp://2\n");
  EXPECT_EQ(announced, (std::vector<std::pair<std::size_t, std::size_t>>{{0, 1}, {1, 2}}));
}

TEST_F(M3uImportTest, AnExportOfAHundredThousandRowsComesBackInOnePiece) {
  std::vector<controls::ListRow> rows(100000);
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const std::string number = std::to_string(index);
    rows[index].cells.Set(0, u"Küche " + Text(number.begin(), number.end()));
    rows[index].cells.Set(2, u"http://stream.example.org/" + rows[index].cells[0]);
  }
  full_.AddRows(std::move(rows));
  const Entries before = EntriesOf(full_);
  test_support::FakeMessageLoop messages;
  test_support::FakeClock clock;
  controls::CommandButton command4;
  M3uExport exporter({{full_, filtered_}, command4}, dialogs_, files_, conversion_, messages, clock, window_);
  dialogs_.chosen_file = kImported;

  command4.Click();
  int announcements = 0;
  const auto subscription = full_.RowsAdded.Subscribe([&](std::size_t, std::size_t) { ++announcements; });
  dialogs_.answers = {MessageBoxAnswer::kNo};
  Command5_.Click();
  EXPECT_EQ(EntriesOf(full_), before);
  EXPECT_EQ(announcements, 1) << "a widget is notified once, not a hundred thousand times";
}

}  // namespace
}  // namespace playlist
