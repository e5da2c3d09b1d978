#include "playlist/list_opening.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/state/status_sentences.h"
#include "tests/support/fake_notices.h"
#include "tests/support/memory_files.h"
#include "tests/support/plain_text_conversion.h"

namespace playlist {
namespace {

using app::Text;
using Selects = ListOpening::Actions::Selects;
using Entries = std::vector<std::pair<Text, Text>>;
using Notice = test_support::FakeNotices::Notice;

const Text kList = u"C:\\Musik\\liste.m3u";
constexpr const char* kTwo = "#EXTINF:-1,Eins, zwei\nhttp://1/\nhttp://2/\n";

class ListOpeningTest : public ::testing::Test {
 protected:
  ListOpeningTest() {
    filtered_.SetVisible(false);
    for (controls::ListView* list : {&full_, &filtered_}) {
      for (const char16_t* caption : {u"Station", u"Genre", u"WebLink"}) list->AddColumn({caption});
    }
    form_closing_ = form_.QueryUnload.Subscribe([this] { window_.End(); });
    controls::ListRow row;
    row.cells.Set(0, u"Alt");
    full_.AddRow(row);
  }

  static Entries EntriesOf(const controls::ListView& list) {
    Entries entries;
    for (const auto& row : list.Rows()) entries.emplace_back(row.cells[0], row.cells[2]);
    return entries;
  }
  void Drop(const std::string& bytes) {
    files_.files[kList] = bytes;
    Drop();
  }
  void Drop() { form_.Dropped.Raise({{kList}, {}, {}}); }
  void ExpectNotice(app::TextView sentence, const Text& argument) {
    EXPECT_EQ(notices_.notices, (std::vector<Notice>{{Text(sentence), {argument}}}));
    notices_.notices.clear();
  }

  const Entries kOld = {{u"Alt", u""}};
  const Entries kAll = {{u"Alt", u""}, {u"Eins, zwei", u"http://1/"}, {u"2", u"http://2/"}};
  app::Life window_;
  controls::Form form_;
  controls::Subscription form_closing_;
  controls::ListView full_;
  controls::ListView filtered_;
  test_support::FakeNotices notices_;
  test_support::MemoryFiles files_;
  test_support::PlainTextConversion conversion_;
  std::vector<Selects> shown_;
  std::function<void()> on_show_ = [] {};
  std::vector<Text> links_;
  ListOpening opening_{{form_, {full_, filtered_}},
                       files_,
                       conversion_,
                       notices_,
                       {[this](Selects selects) {
                          shown_.push_back(selects);
                          on_show_();
                        },
                        [this](const Text& link) { links_.push_back(link); }},
                       window_};
};

TEST_F(ListOpeningTest, RowsOfAListJoinTheFullListAtItsEnd) {
  Drop(kTwo);
  EXPECT_EQ(EntriesOf(full_), kAll);
  EXPECT_EQ(full_.Rows()[1].icon, -1);
  EXPECT_EQ(full_.Rows()[1].cells[1], u"");
  ExpectNotice(app::sentences::kImported, u"2");
}

TEST_F(ListOpeningTest, FirstNewRowIsSelectedAndScrolledIntoView) {
  controls::RowId shown = controls::RowId::kNone;
  const auto subscription = full_.ScrollWanted.Subscribe([&](controls::RowId row) { shown = row; });
  Drop(kTwo);
  EXPECT_EQ(shown, full_.RowAt(1));
  EXPECT_EQ(full_.SelectedRow(), full_.RowAt(1));
}

TEST_F(ListOpeningTest, FullListIsShownBeforeItsRowsCome) {
  on_show_ = [this] { EXPECT_EQ(full_.Count(), 1U); };
  Drop(kTwo);
  EXPECT_EQ(shown_, std::vector{Selects::kNewRow});
}

TEST_F(ListOpeningTest, RowsAreAnnouncedInOnePiece) {
  std::vector<std::pair<std::size_t, std::size_t>> announced;
  const auto subscription = full_.RowsAdded.Subscribe(
      [&](std::size_t first, std::size_t count) { announced.emplace_back(first, count); });
  Drop(kTwo);
  EXPECT_EQ(announced, (std::vector<std::pair<std::size_t, std::size_t>>{{1, 2}}));
}

TEST_F(ListOpeningTest, LinkAsksForTheRestOfANewStation) {
  form_.Dropped.Raise({{}, {u"http://a/live"}, {}});
  EXPECT_EQ(links_, std::vector<Text>{u"http://a/live"});
  EXPECT_EQ(shown_, std::vector{Selects::kRememberedRow});
  EXPECT_EQ(EntriesOf(full_), kOld);
  EXPECT_TRUE(notices_.notices.empty());
}

TEST_F(ListOpeningTest, NoticeSaysWhyNoRowCameAndNothingElseHappens) {
  const std::vector<std::pair<std::string, app::TextView>> files = {
      {" \r\n", app::sentences::kImportEmpty},
      {"#EXTM3U\n#EXTINF:1,A\nC:\\a.mp3\n", app::sentences::kListWithoutLinks},
      {"#EXT-X-TARGETDURATION:9\nhttp://1/\n", app::sentences::kListIsStream},
      {std::string(kLargestStationList + 1, 'x'), app::sentences::kListUnreadable}};
  for (const auto& [bytes, sentence] : files) {
    Drop(bytes);
    ExpectNotice(sentence, u"liste.m3u");
  }
  files_.files.clear();
  Drop();
  ExpectNotice(app::sentences::kListMissing, u"liste.m3u");
  files_.folders.insert(kList + u"\\");
  Drop();
  ExpectNotice(app::sentences::kListUnreadable, u"liste.m3u");
  EXPECT_EQ(EntriesOf(full_), kOld);
  EXPECT_TRUE(shown_.empty());
}

TEST_F(ListOpeningTest, ListThatIsTooLongIsCutWithANotice) {
  std::string bytes;
  for (std::size_t number = 0; number <= kMostStations; ++number) bytes += "http://a/\n";
  Drop(bytes);
  EXPECT_EQ(full_.Count(), 1 + kMostStations);
  ExpectNotice(app::sentences::kListCut, u"100000");
}

TEST_F(ListOpeningTest, WhatIsNeitherListNorLinkIsRefusedWithANotice) {
  form_.Dropped.Raise({{u"C:\\bild.png"}, {}, {}});
  ExpectNotice(app::sentences::kNotOpenable, u"bild.png");
  EXPECT_TRUE(shown_.empty());
}

TEST_F(ListOpeningTest, UnderADialogNothingIsOpened) {
  files_.files[kList] = kTwo;
  form_.DroppedUnderDialog.Raise({{kList}, {}, {}});
  ExpectNotice(app::sentences::kNotOpenedNow, u"liste.m3u");
  EXPECT_EQ(EntriesOf(full_), kOld);
  EXPECT_TRUE(shown_.empty());
}

TEST_F(ListOpeningTest, WindowAcceptsListsAndLinksOnly) {
  ASSERT_TRUE(form_.Accepts);
  EXPECT_TRUE(form_.Accepts({{kList}, {}, {}}));
  EXPECT_TRUE(form_.Accepts({{}, {}, u"http://a/"}));
  EXPECT_FALSE(form_.Accepts({{u"C:\\bild.png"}, {}, {}}));
}

TEST_F(ListOpeningTest, ClosingWindowOpensNothing) {
  files_.files[kList] = kTwo;
  const auto closing = form_.QueryUnload.Subscribe([this] { Drop(); });
  form_.Close();
  EXPECT_EQ(EntriesOf(full_), kOld);
  EXPECT_TRUE(shown_.empty());
}

TEST_F(ListOpeningTest, WindowThatClosesWhileTheFullListIsShownGetsNoRowsAndNoDialog) {
  on_show_ = [this] { form_.Close(); };
  Drop(kTwo);
  EXPECT_EQ(EntriesOf(full_), kOld);
  EXPECT_TRUE(notices_.notices.empty());
}

TEST_F(ListOpeningTest, WindowThatClosesWhileTheFullListIsShownGetsNoDialog) {
  on_show_ = [this] { form_.Close(); };
  form_.Dropped.Raise({{}, {u"http://a/"}, {}});
  EXPECT_TRUE(links_.empty());
}

TEST_F(ListOpeningTest, WindowThatClosesDuringTheSelectionGetsNoNotice) {
  const auto closing = full_.SelectionChanged.Subscribe([this] { form_.Close(); });
  Drop(kTwo);
  EXPECT_EQ(EntriesOf(full_), kAll);
  EXPECT_TRUE(notices_.notices.empty());
}

TEST_F(ListOpeningTest, ListThatComesDuringTheSelectionHasTheLastWord) {
  bool again = true;
  const auto second = full_.SelectionChanged.Subscribe([&] {
    if (std::exchange(again, false)) Drop("http://3/\n");
  });
  Drop(kTwo);
  EXPECT_EQ(full_.Count(), 4U);
  EXPECT_EQ(full_.SelectedRow(), full_.RowAt(3));
  ExpectNotice(app::sentences::kImported, u"1");
}

TEST_F(ListOpeningTest, ListEmptiedDuringTheSelectionDoesNoHarm) {
  const auto emptied = full_.SelectionChanged.Subscribe([this] { full_.Clear(); });
  Drop(kTwo);
  ExpectNotice(app::sentences::kImported, u"2");
}

}  // namespace
}  // namespace playlist
