#include "catalogue/station_icons.h"

#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using StationIconsTest = CatalogueTest;

constexpr char16_t kFolder[] = u"C:\\Prog\\RadioIco";

TEST_F(StationIconsTest, ImageListIsMadeOnceForBothLists) {
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(icon_port.created, (std::vector<std::vector<int>>{{32, 32, 0x21, 9, 0}}));
  EXPECT_EQ(SymbolListview.ImageList(), 7U);
  EXPECT_EQ(ExplorerListFilter.ImageList(), 7U);
  EXPECT_EQ(files.patterns, (std::vector<Text>{u"C:\\Prog\\RadioIco\\*.*"}));
}

TEST_F(StationIconsTest, FolderWithItsTrailingSeparatorIsTakenAsItIs) {
  icons.LoadStationIcons(Text(kFolder) + u"\\");
  EXPECT_EQ(files.patterns, (std::vector<Text>{u"C:\\Prog\\RadioIco\\*.*"}));
}

TEST_F(StationIconsTest, OnlyIconFilesCountInAnyLetterCase) {
  files.listing = {{u"Radio Beispiel.ICO", false, false}, {u"Radio Beispiel.png", false, false},
                   {u"Zwei.iCo", false, false},           {u"Ordner.ico", true, false},
                   {u"Verweis.ico", false, true},         {u"ohne", false, false}};
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(icons.IconOf(u"Radio Beispiel"), 0);
  EXPECT_EQ(icons.IconOf(u"Zwei"), 1);
  EXPECT_EQ(icons.IconOf(u"Ordner"), -1);
  EXPECT_EQ(icons.IconOf(u"Verweis"), -1);
  EXPECT_EQ(icon_port.loads.size(), 2U);
  EXPECT_EQ(icon_port.loads[0].first, u"C:\\Prog\\RadioIco\\Radio Beispiel.ICO");
  EXPECT_EQ(icon_port.loads[0].second, std::make_pair(32, 32));
}

TEST_F(StationIconsTest, NameIsWhatStandsBeforeTheLastPoint) {
  files.listing = {{u"Radio 1.5.ico", false, false}};
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(icons.IconOf(u"radio 1.5"), 0);
}

TEST_F(StationIconsTest, EveryLoadedIconAndSearchIsReleased) {
  files.listing = {{u"A.ico", false, false}, {u"B.ico", false, false}};
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(icon_port.live_icons, 0);
  EXPECT_EQ(files.open_searches, 0);
}

TEST_F(StationIconsTest, SearchThatFindsNothingIsNotClosed) {
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(files.open_searches, 0);
}

TEST_F(StationIconsTest, LoadingAgainBeginsAnew) {
  files.listing = {{u"A.ico", false, false}};
  icons.LoadStationIcons(kFolder);
  files.listing = {{u"A.ico", false, false}};
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(icon_port.destroyed_lists, 1);
  EXPECT_TRUE(dialogs.boxes.empty()) << "the name was not taken yet";
}

TEST_F(StationIconsTest, FileThatCannotBeLoadedIsSkipped) {
  files.listing = {{u"kaputt.ico", false, false}, {u"gut.ico", false, false}};
  icon_port.loadable = [](const Text& path) { return path.find(u"gut") != Text::npos; };
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(icons.IconOf(u"kaputt"), -1);
  EXPECT_EQ(icons.IconOf(u"gut"), 0);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StationIconsTest, IconThatTheImageListRefusesGivesNoIconAndIsReleased) {
  files.listing = {{u"A.ico", false, false}, {u"a.ICO", false, false}};
  icon_port.refuses_icons = true;
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(icons.IconOf(u"A"), -1);
  EXPECT_EQ(icon_port.loads.size(), 2U);
  EXPECT_EQ(icon_port.live_icons, 0);
  EXPECT_TRUE(dialogs.boxes.empty()) << "the name is not taken by an icon that is not there";
}

TEST_F(StationIconsTest, SecondFileOfTheSameNameIsReportedAndTheLoopContinues) {
  files.listing = {{u"A.ico", false, false}, {u"a.ICO", false, false}, {u"B.ico", false, false}};
  icons.LoadStationIcons(kFolder);
  ASSERT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_EQ(dialogs.boxes[0].style, 0U);
  EXPECT_FALSE(dialogs.boxes[0].text.empty());
  EXPECT_EQ(icons.IconOf(u"A"), 0);
  EXPECT_EQ(icons.IconOf(u"B"), 2);
  EXPECT_EQ(icon_port.live_icons, 0);
}

TEST_F(StationIconsTest, MissingFolderGivesNoIconsAndNoMessage) {
  icons.LoadStationIcons(kFolder);
  EXPECT_EQ(icons.IconOf(u"A"), -1);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StationIconsTest, ImageListIsDestroyedOnce) {
  icons.LoadStationIcons(kFolder);
  icons.Destroy();
  icons.Destroy();
  EXPECT_EQ(icon_port.destroyed_lists, 1);
  EXPECT_EQ(SymbolListview.ImageList(), 0U);
}

TEST(ItemIndexTest, GivesTheEntryOrMinusOne) {
  test_support::PlainTextConversion conversion;
  KeyedCollection collection(conversion);
  EXPECT_TRUE(collection.Add(5, u"Äther"));
  EXPECT_FALSE(collection.Add(6, u"äTHER"));
  EXPECT_EQ(ItemIndex(collection, u"äther"), 5);
  EXPECT_EQ(ItemIndex(collection, u""), -1);
}

}  // namespace
}  // namespace catalogue
