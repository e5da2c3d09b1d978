#include "catalogue/station_store.h"

#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using StationStoreTest = CatalogueTest;

TEST_F(StationStoreTest, LoadsEveryStationWithAllItsFieldsIntoTheFullList) {
  AddStation(u"Radio Beispiel", u"Pop & Hits", u"http://radio.example/live", u"1", u"3");
  store.LoadStations(u"");
  ASSERT_EQ(SymbolListview.Count(), 1U);
  const controls::ListRow& row = SymbolListview.Rows()[0];
  EXPECT_EQ(row.cells, (controls::ListCells{u"Radio Beispiel", u"Pop & Hits", u"http://radio.example/live",
                                            u"1", u"", u"3"}));
  EXPECT_EQ(row.icon, -1);
  EXPECT_EQ(ExplorerListFilter.Count(), 0U);
}

TEST_F(StationStoreTest, AllStationsAreReadTogether) {
  AddStation(u"Radio Beispiel", u"Pop & Hits", u"http://radio.example/live", u"1", u"3");
  profile.reads_outside_groups = 0;
  for (const Text& filter : {Text(), Text(u"1"), Text(u"Pop & Hits")}) store.LoadStations(filter);
  EXPECT_EQ(profile.reads_outside_groups, 0);
  EXPECT_EQ(profile.open_read_groups, 0);
}

TEST_F(StationStoreTest, SectionNameRulesOverTheStationKey) {
  AddStation(u"Name");
  profile.Set(kStationFile, u"Name", u"Station", u"Anderer");
  store.LoadStations(u"");
  EXPECT_EQ(Names(SymbolListview), std::vector<Text>{u"Name"});
}

TEST_F(StationStoreTest, FileWithoutSectionsLeavesBothViewsEmptyAndShowsNothing) {
  store.LoadStations(u"");
  store.LoadStations(u"1");
  EXPECT_EQ(SymbolListview.Count(), 0U);
  EXPECT_EQ(ExplorerListFilter.Count(), 0U);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StationStoreTest, GenreIsComparedWithoutRegardToCase) {
  AddStation(u"A", u"pop & hits");
  AddStation(u"B", u"Rock");
  AddStation(u"C", u"POP & HITS");
  store.LoadStations(u"Pop & Hits");
  EXPECT_EQ(Names(ExplorerListFilter), (std::vector<Text>{u"A", u"C"}));
}

TEST_F(StationStoreTest, GenreWithUmlautIsComparedWithoutRegardToCase) {
  AddStation(u"A", u"Österreich");
  store.LoadStations(u"öSTERREICH");
  EXPECT_EQ(ExplorerListFilter.Count(), 1U);
}

TEST_F(StationStoreTest, OnlyTheMarkOneIsAFavourite) {
  AddStation(u"A", u"", u"", u"1");
  AddStation(u"B", u"", u"", u"0");
  AddStation(u"C", u"", u"", u"ja");
  AddStation(u"D");
  store.LoadStations(u"1");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"A"});
}

TEST_F(StationStoreTest, GenreNamedOneCanNeverBeFilteredFor) {
  AddStation(u"A", u"1");
  store.LoadStations(u"1");
  EXPECT_EQ(ExplorerListFilter.Count(), 0U);
}

TEST_F(StationStoreTest, FilterThatOnlyBeginsOrEndsWithOneIsAGenre) {
  AddStation(u"A", u"1990er");
  AddStation(u"B", u"Top 1");
  AddStation(u"C", u"Rock", u"", u"1");
  AddStation(u"D", u"Rock", u"", u"1990er");
  store.LoadStations(u"1990er");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"A"});
  store.LoadStations(u"Top 1");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"B"});
}

TEST_F(StationStoreTest, GenreIsComparedAsAWhole) {
  AddStation(u"A", u"Rock");
  AddStation(u"B", u"Rock & Roll");
  AddStation(u"C", u"Hard Rock");
  AddStation(u"D", u"Roc");
  AddStation(u"E");
  store.LoadStations(u"Rock");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"A"});
  store.LoadStations(u"Hard Rock");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"C"});
}

TEST_F(StationStoreTest, FilteredListIsEmptiedBeforeItIsFilled) {
  AddStation(u"A", u"Rock");
  AddRow(ExplorerListFilter, u"alt");
  store.LoadStations(u"Rock");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"A"});
}

TEST_F(StationStoreTest, NamesBeyondTheNameListAreSilentlyMissing) {
  // 82 names of 99 characters and their NULs fill 8,200 characters: the last one is cut in its middle.
  for (int index = 100; index < 182; ++index) {
    AddStation(Text(96, u'x') + Text(1, char16_t(u'0' + index / 100)) +
               Text(1, char16_t(u'0' + index / 10 % 10)) + Text(1, char16_t(u'0' + index % 10)));
  }
  store.LoadStations(u"");
  EXPECT_EQ(profile.section_buffers, std::vector<std::size_t>{8192});
  EXPECT_EQ(SymbolListview.Count(), 82U);
  const Text last = SymbolListview.Rows().front().cells[app::kNameCell];
  EXPECT_EQ(last.size(), 90U) << "a name cut by the limit is just that name";
}

TEST_F(StationStoreTest, StationsThatFitTheNameListExactlyAreAllLoadedAndOneCharacterMoreIsCut) {
  for (int index = 0; index < 81; ++index) {
    AddStation(Text(98, u'x') + Text(1, char16_t(u'0' + index % 10)) + Text(1, char16_t(u'a' + index / 10)));
  }
  ASSERT_EQ(81 * 101 + 10, 8191) << "each name with its NUL";
  AddStation(u"ein Limit", u"Rock");
  store.LoadStations(u"");
  EXPECT_EQ(SymbolListview.Count(), 82U);
  EXPECT_EQ(SymbolListview.Rows()[0].cells[app::kGenreCell], u"Rock");

  profile.files[kStationFile].back().name = u"ein Limit!";
  store.LoadStations(u"");
  EXPECT_EQ(SymbolListview.Count(), 82U);
  EXPECT_EQ(SymbolListview.Rows()[0].cells[app::kNameCell], u"ein Limit")
      << "cut, so that its keys are not found";
  EXPECT_EQ(SymbolListview.Rows()[0].cells[app::kGenreCell], u"");
}

TEST_F(StationStoreTest, MissingKeysGiveEmptyCells) {
  profile.Set(kStationFile, u"A", u"Notiz", u"x");
  store.LoadStations(u"");
  ASSERT_EQ(SymbolListview.Count(), 1U);
  EXPECT_EQ(SymbolListview.Rows()[0].cells, (controls::ListCells{u"A", u"", u"", u"", u"", u""}));
}

TEST_F(StationStoreTest, SectionThatStandsTwiceIsListedTwiceWithTheFirstOnesValues) {
  profile.files[kStationFile] = {{u"A", {{u"Link", u"http://1"}}}, {u"A", {{u"Link", u"http://2"}}}};
  store.LoadStations(u"");
  ASSERT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"A"}));
  EXPECT_EQ(SymbolListview.Rows()[1].cells[app::kLinkCell], u"http://1");
}

TEST_F(StationStoreTest, NameOutsideTheCodePageComesBackWithSubstitutesAndEmptyCells) {
  AddStation(u"Радио", u"Rock", u"http://x");
  store.LoadStations(u"");
  ASSERT_EQ(SymbolListview.Count(), 1U);
  EXPECT_EQ(SymbolListview.Rows()[0].cells[app::kNameCell], u"?????");
  EXPECT_EQ(SymbolListview.Rows()[0].cells[app::kLinkCell], u"");
}

TEST_F(StationStoreTest, RowsCarryTheirStationsIcon) {
  files.listing = {{u"Radio Beispiel.ICO", false, false}};
  icons.LoadStationIcons(u"C:\\Prog\\RadioIco");
  AddStation(u"radio beispiel");
  AddStation(u"Ohne");
  store.LoadStations(u"");
  EXPECT_EQ(SymbolListview.Rows()[0].icon, -1);
  EXPECT_EQ(SymbolListview.Rows()[1].icon, 0);
}

TEST_F(StationStoreTest, ReloadKeepsTheOrderThatTheUserChose) {
  AddStation(u"A", u"Rock");
  AddStation(u"B", u"Dance");
  store.LoadStations(u"");
  SymbolListview.ClickHeader(1);
  SymbolListview.ClickHeader(1);
  ASSERT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B"}));
  AddStation(u"C", u"Schlager");
  store.LoadStations(u"");
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"C", u"A", u"B"}));
}

TEST_F(StationStoreTest, LoadedListStandsInTheOrderOfTheNamesUpwardsSoThatTheFirstClickTurnsItRound) {
  AddStation(u"Radio 10");
  AddStation(u"radio 2");
  store.LoadStations(u"");
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"radio 2", u"Radio 10"}));
  EXPECT_EQ(SymbolListview.SortColumn(), 0);
  EXPECT_EQ(SymbolListview.GetSortDirection(), controls::SortDirection::kAscending);
  SymbolListview.ClickHeader(0);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"Radio 10", u"radio 2"}));
}

TEST_F(StationStoreTest, FilteredListKeepsTheOrderThatTheUserChoseToo) {
  AddStation(u"A", u"Rock", u"http://2");
  AddStation(u"B", u"Rock", u"http://1");
  store.LoadStations(u"Rock");
  ExplorerListFilter.ClickHeader(2);
  store.LoadStations(u"Rock");
  EXPECT_EQ(Names(ExplorerListFilter), (std::vector<Text>{u"B", u"A"}));
}

TEST_F(StationStoreTest, ReloadEmptiesTheFullListFirst) {
  AddStation(u"A");
  store.LoadStations(u"");
  store.LoadStations(u"");
  EXPECT_EQ(Names(SymbolListview), std::vector<Text>{u"A"});
}

TEST_F(StationStoreTest, RowsThatTheFileDoesNotHoldYetAreKeptAndSortedAmongTheLoadedOnes) {
  AddStation(u"A");
  AddStation(u"C");
  store.LoadStations(u"");
  AddRow(SymbolListview, u"B neu", u"Rock", u"http://neu");
  ASSERT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"C", u"B neu"}));
  store.LoadStations(u"");
  store.LoadStations(u"");
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B neu", u"C"}));
  EXPECT_EQ(SymbolListview.Rows()[1].cells[app::kLinkCell], u"http://neu");
}

TEST_F(StationStoreTest, SavedRowsAreNotKeptBesideTheLoadedOnes) {
  AddRow(SymbolListview, u"Neu");
  editor.CommandButton1_Click();
  store.LoadStations(u"");
  EXPECT_EQ(Names(SymbolListview), std::vector<Text>{u"Neu"});
}

TEST_F(StationStoreTest, LoadingMakesTheDetailsStale) {
  state.details_are_stale = false;
  store.LoadStations(u"");
  EXPECT_TRUE(state.details_are_stale);
}

}  // namespace
}  // namespace catalogue
