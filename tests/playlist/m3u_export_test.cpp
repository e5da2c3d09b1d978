#include "playlist/m3u_export.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/plain_text_conversion.h"

namespace playlist {
namespace {

using app::Text;

const Text kExported = u"C:\\Musik\\liste.m3u";

controls::ListRow Row(const Text& name, const Text& link) {
  controls::ListRow row;
  row.cells.Set(0, name);
  row.cells.Set(1, u"Rock");
  row.cells.Set(2, link);
  row.cells.Set(4, u"Titel");
  return row;
}

/// Counts the conversions to bytes.
class CountingConversion : public platform::TextConversion {
 public:
  std::string WideCharToMultiByte(platform::CodePage page, platform::TextView text) override {
    ++conversions;
    return real_.WideCharToMultiByte(page, text);
  }
  Text MultiByteToWideChar(platform::CodePage page, std::string_view bytes) override {
    return real_.MultiByteToWideChar(page, bytes);
  }
  Text CharLowerW(platform::TextView text) override { return real_.CharLowerW(text); }
  Text CharUpperW(platform::TextView text) override { return real_.CharUpperW(text); }

  int conversions = 0;

 private:
  test_support::PlainTextConversion real_;
};

class M3uExportTest : public testing::Test {
 protected:
  M3uExportTest() {
    filtered_.SetVisible(false);
    dialogs_.chosen_file = kExported;
  }

  void AddThreeStations() {
    full_.AddRow(Row(u"Eins", u"http://1"));
    full_.AddRow(Row(u"Zwei", u"http://2"));
    full_.AddRow(Row(u"Drei", u"http://3"));
  }
  [[nodiscard]] std::string Written() const {
    const auto file = files_.files.find(kExported);
    return file == files_.files.end() ? "<nothing>" : file->second;
  }

  app::Life window_;
  controls::ListView full_;
  controls::ListView filtered_;
  controls::CommandButton Command4_;
  test_support::FakeDialogs dialogs_;
  test_support::MemoryFiles files_;
  CountingConversion conversion_;
  test_support::FakeMessageLoop messages_;
  test_support::FakeClock clock_;
  M3uExport export_{
      {{full_, filtered_}, Command4_}, dialogs_, files_, conversion_, messages_, clock_, window_};
};

TEST_F(M3uExportTest, WritesNameAndLinkOfEveryRowWithLineFeedsAndEndsInLfCrLf) {
  AddThreeStations();
  Command4_.Click();
  EXPECT_EQ(Written(),
            "#EXTM3U\n"
            "#EXTINF:-1,Eins\nhttp://1\n"
            "#EXTINF:-1,Zwei\nhttp://2\n"
            "#EXTINF:-1,Drei\nhttp://3\n"
            "\r\n");
}

TEST_F(M3uExportTest, AnEmptyListGivesTheHeaderOnly) {
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n\r\n");
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
}

TEST_F(M3uExportTest, AFilteredViewExportsOnlyTheFilteredRows) {
  AddThreeStations();
  filtered_.AddRow(Row(u"Vier", u"http://4"));
  filtered_.SetVisible(true);
  full_.SetVisible(false);
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n#EXTINF:-1,Vier\nhttp://4\n\r\n");
}

TEST_F(M3uExportTest, RowsComeInTheirDisplayOrder) {
  AddThreeStations();
  full_.Sort(0, controls::SortDirection::kAscending, [this](std::size_t first, std::size_t second) {
    return full_.Rows()[first].cells[0].compare(full_.Rows()[second].cells[0]);
  });
  Command4_.Click();
  EXPECT_EQ(Written(),
            "#EXTM3U\n#EXTINF:-1,Drei\nhttp://3\n#EXTINF:-1,Eins\nhttp://1\n#EXTINF:-1,Zwei\nhttp://2\n\r\n");
}

TEST_F(M3uExportTest, NamesAndLinksAreWrittenAsTheyStand) {
  full_.AddRow(Row(u"a,b\nc", u" x "));
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n#EXTINF:-1,a,b\nc\n x \n\r\n");
}

TEST_F(M3uExportTest, AnEmptyLinkGivesAnEmptyLinkLine) {
  full_.AddRow(Row(u"Eins", u""));
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n#EXTINF:-1,Eins\n\n\r\n");
}

TEST_F(M3uExportTest, TheFileIsInTheAnsiCodePageWithQuestionMarksForTheRest) {
  full_.AddRow(Row(u"Köln €", u"http://Ω"));
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n#EXTINF:-1,K\xF6ln \x80\nhttp://?\n\r\n");
}

TEST_F(M3uExportTest, TheSaveDialogOffersANameOfDateAndTimeAndDoesNotAskBeforeOverwriting) {
  Command4_.Click();
  ASSERT_EQ(dialogs_.file_dialogs.size(), 1U);
  const auto& record = dialogs_.file_dialogs[0];
  EXPECT_EQ(record.file, u"Radioliste_15_11_2026233536.m3u" + Text(512, u'\0'));
  EXPECT_EQ(record.default_extension, u"m3u");
  EXPECT_EQ(record.filter, Text(u"M3U-Datei (*.m3u)\0*.m3u\0\0", 25));
  EXPECT_EQ(record.title, u"");
  EXPECT_EQ(record.initial_folder, u"");
  EXPECT_EQ(record.flags, 1U);
}

TEST_F(M3uExportTest, TheOfferedNameHasTwoDigitsForEachPartOfDateAndTime) {
  clock_.local_time = {2027, 3, 4, 5, 6, 7};
  Command4_.Click();
  EXPECT_TRUE(dialogs_.file_dialogs[0].file.starts_with(u"Radioliste_04_03_2027050607.m3u"));
}

TEST_F(M3uExportTest, ReportsWhereTheListIs) {
  AddThreeStations();
  Command4_.Click();
  ASSERT_EQ(dialogs_.boxes.size(), 1U);
  EXPECT_EQ(dialogs_.boxes[0],
            (test_support::FakeDialogs::Box{u"M3U-Liste gespeichert unter: C:\\Musik\\liste.m3u", u"", 64}));
}

TEST_F(M3uExportTest, CancellingTheSaveDialogWritesAndShowsNothing) {
  AddThreeStations();
  dialogs_.chosen_file.clear();
  Command4_.Click();
  EXPECT_TRUE(files_.files.empty());
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_EQ(messages_.pumps, 0);
}

TEST_F(M3uExportTest, AFileThatCannotBeWrittenEndsWithoutAnyMessage) {
  AddThreeStations();
  files_.files[kExported] = "alt";
  files_.can_write = false;
  Command4_.Click();
  EXPECT_EQ(Written(), "alt");
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(M3uExportTest, EscapeWritesAShortenedFileAndStillShowsTheConfirmation) {
  AddThreeStations();
  messages_.on_pump = [this] {
    if (messages_.pumps == 3) messages_.keys[27] = static_cast<std::int16_t>(-32768);
  };
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n#EXTINF:-1,Eins\nhttp://1\n#EXTINF:-1,Zwei\nhttp://2\n\r\n");
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
}

TEST_F(M3uExportTest, AnEscapeSinceThePreviousQueryCountsToo) {
  AddThreeStations();
  messages_.keys[27] = 1;
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n\r\n");
}

TEST_F(M3uExportTest, MessagesAreProcessedBeforeEveryRow) {
  AddThreeStations();
  Command4_.Click();
  EXPECT_EQ(messages_.pumps, 3);
}

TEST_F(M3uExportTest, RowsRemovedMeanwhileAreLeftOut) {
  AddThreeStations();
  messages_.on_pump = [this] {
    if (messages_.pumps == 2) full_.RemoveRow(full_.RowAt(1));
  };
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n#EXTINF:-1,Eins\nhttp://1\n#EXTINF:-1,Drei\nhttp://3\n\r\n");
}

TEST_F(M3uExportTest, AListEmptiedMeanwhileEndsTheListEarly) {
  AddThreeStations();
  messages_.on_pump = [this] {
    if (messages_.pumps == 2) full_.Clear();
  };
  Command4_.Click();
  EXPECT_EQ(Written(), "#EXTM3U\n#EXTINF:-1,Eins\nhttp://1\n\r\n");
}

TEST_F(M3uExportTest, SortingMeanwhileNeitherRepeatsNorLosesARow) {
  AddThreeStations();
  messages_.on_pump = [this] {
    full_.Sort(0, controls::SortDirection::kDescending, [this](std::size_t first, std::size_t second) {
      const int order = full_.Rows()[first].cells[0].compare(full_.Rows()[second].cells[0]);
      return messages_.pumps % 2 == 0 ? order : -order;
    });
  };
  Command4_.Click();
  EXPECT_EQ(Written(),
            "#EXTM3U\n#EXTINF:-1,Eins\nhttp://1\n#EXTINF:-1,Zwei\nhttp://2\n#EXTINF:-1,Drei\nhttp://3\n\r\n");
}

TEST_F(M3uExportTest, AWindowThatClosesMeanwhileLeavesTheFileAlone) {
  AddThreeStations();
  messages_.on_pump = [this] {
    if (messages_.pumps == 2) window_.End();
  };
  Command4_.Click();
  EXPECT_EQ(messages_.pumps, 2);
  EXPECT_EQ(Written(), "<nothing>");
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(M3uExportTest, WorkForALongListGrowsWithItsRowsOnly) {
  std::vector<controls::ListRow> rows;
  const Text link = u"http://stream.example.org/x";
  for (int number = 0; number < 100000; ++number) rows.push_back(Row(u"Radio Beispiel", link));
  full_.AddRows(std::move(rows));
  Command4_.Click();
  EXPECT_EQ(std::ranges::count(Written(), '\n'), 200002);
  EXPECT_EQ(messages_.pumps, 100000);
  // However long the list is: one conversion and one writing of the whole text.
  EXPECT_EQ(conversion_.conversions, 1);
  EXPECT_EQ(files_.writes, 1);
}

}  // namespace
}  // namespace playlist
