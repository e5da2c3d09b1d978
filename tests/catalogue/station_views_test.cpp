#include "catalogue/station_views.h"

#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using controls::CheckValue;

class StationViewsTest : public CatalogueTest {
 protected:
  StationViewsTest() {
    AddStation(u"A", u"Rock", u"http://a", u"1");
    AddStation(u"B", u"80er/90er", u"http://b");
    AddStation(u"C", u"Electro,Black Music", u"http://c");
    AddStation(u"D", u"Dance", u"http://d", u"1");
    store.LoadStations(u"");
    profile.writes.clear();
  }

  void ExpectFullView() {
    EXPECT_TRUE(SymbolListview.Visible());
    EXPECT_FALSE(ExplorerListFilter.Visible());
    EXPECT_TRUE(CommandButton1.Visible());
    EXPECT_TRUE(CommandButton2.Visible());
    EXPECT_EQ(Frame2.Caption(), u"Gespeicherte Radiostationen");
  }
  void ExpectFilteredView() {
    EXPECT_FALSE(SymbolListview.Visible());
    EXPECT_TRUE(ExplorerListFilter.Visible());
    EXPECT_FALSE(CommandButton1.Visible());
    EXPECT_FALSE(CommandButton2.Visible());
  }
};

TEST_F(StationViewsTest, GenreViewShowsTheChosenGenreAndNamesIt) {
  Check1.Click();
  ExpectFilteredView();
  EXPECT_EQ(Frame2.Caption(), u"Genre-Filter: 80er/90er");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"B"});
}

TEST_F(StationViewsTest, FavouritesViewShowsTheFavourites) {
  Check3.Click();
  ExpectFilteredView();
  EXPECT_EQ(Frame2.Caption(), u"Favoriten");
  EXPECT_EQ(Names(ExplorerListFilter), (std::vector<Text>{u"A", u"D"}));
}

TEST_F(StationViewsTest, CheckingFavouritesUnchecksTheGenreViewAndBackAgain) {
  Check1.Click();
  Check3.Click();
  EXPECT_FALSE(Check1.Checked());
  EXPECT_EQ(Frame2.Caption(), u"Favoriten");
  EXPECT_EQ(Names(ExplorerListFilter), (std::vector<Text>{u"A", u"D"}));
  Check1.Click();
  EXPECT_FALSE(Check3.Checked());
  EXPECT_EQ(Frame2.Caption(), u"Genre-Filter: 80er/90er");
  ExpectFilteredView();
}

TEST_F(StationViewsTest, UncheckingReturnsToTheFullListWithTheSelectedRowSelectedAgain) {
  for (controls::CheckBox* box : {&Check1, &Check3}) {
    SymbolListview.Select(RowNamed(SymbolListview, u"C"));
    box->Click();
    box->Click();
    ExpectFullView();
    EXPECT_EQ(SymbolListview.Cell(SymbolListview.SelectedRow(), app::kNameCell), u"C");
  }
}

TEST_F(StationViewsTest, ProgrammaticUncheckingDoesNotRunTheOtherBoxesBehaviour) {
  Check1.Click();
  int captions = 0;
  const auto subscription = Frame2.Changed.Subscribe([&] { ++captions; });
  Check3.Click();
  EXPECT_EQ(captions, 1) << "only the favourites view names itself";
}

TEST_F(StationViewsTest, ClickInTheMiddleOfASwitchDoesNothing) {
  bool clicked = false;
  const auto subscription = Frame2.Changed.Subscribe([&] {
    if (!std::exchange(clicked, true)) Check3.Click();
  });
  Check1.Click();
  EXPECT_EQ(Frame2.Caption(), u"Genre-Filter: 80er/90er");
  EXPECT_FALSE(Check3.Checked());
}

TEST_F(StationViewsTest, ClickWhileTheRestoredRowIsResolvedLeavesNoMarkInTheBox) {
  for (controls::CheckBox* box : {&Check1, &Check3}) {
    SymbolListview.Select(RowNamed(SymbolListview, u"C"));
    Check3.Click();
    {
      const auto subscription = SymbolListview.SelectionChanged.Subscribe([&] {
        if (SymbolListview.SelectedRow() != controls::RowId::kNone) box->Click();
      });
      Check3.Click();
    }
    EXPECT_FALSE(Check1.Checked() || Check3.Checked());
    ExpectFullView();
    Check1.Click();
    ExpectFilteredView();
    Check1.Click();
  }
}

TEST_F(StationViewsTest, ChoosingAGenreReloadsTheGenreView) {
  Check1.Click();
  Combo1.SetListIndex(2);
  EXPECT_EQ(Frame2.Caption(), u"Genre-Filter: Electro,Black Music");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"C"});
}

TEST_F(StationViewsTest, ChoosingAGenreWithoutTheGenreViewChangesNothingElse) {
  Combo1.SetListIndex(2);
  ExpectFullView();
  EXPECT_EQ(ExplorerListFilter.Count(), 0U);
}

TEST_F(StationViewsTest, BothEntriesOfAGenreListedTwiceFilterTheSameStations) {
  Check1.Click();
  Combo1.SetListIndex(3);
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"D"});
  Combo1.SetListIndex(4);
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"D"});
}

TEST_F(StationViewsTest, GenreWithoutStationsGivesAnEmptyListWithoutAMessage) {
  Check1.Click();
  Combo1.SetListIndex(1);
  EXPECT_EQ(ExplorerListFilter.Count(), 0U);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StationViewsTest, FavouriteMarkWithoutASelectionSaysSoAndChangesNothing) {
  Check2.Click();
  EXPECT_EQ(
      dialogs.boxes,
      (std::vector<test_support::FakeDialogs::Box>{{u"Bitte zuerst eine Radiostation markieren!", u"", 64}}));
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(StationViewsTest, FavouriteMarkIsWrittenAtOnceAndIsNoUnsavedChange) {
  const auto row = RowNamed(SymbolListview, u"B");
  SymbolListview.Select(row);
  Check2.Click();
  EXPECT_EQ(SymbolListview.Cell(row, app::kFavouriteCell), u"1");
  EXPECT_EQ(profile.Get(kStationFile, u"B", u"Favorit"), u"1");
  EXPECT_FALSE(settings.CatalogueChanged);
}

TEST_F(StationViewsTest, UnmarkingInTheFavouritesViewEmptiesTheCellAndKeepsTheRow) {
  Check3.Click();
  Check2.SetValue(CheckValue::kUnchecked);
  state.filling_fields = true;
  Check2.SetValue(CheckValue::kChecked);
  state.filling_fields = false;
  const auto row = RowNamed(ExplorerListFilter, u"A");
  ExplorerListFilter.Select(row);
  Check2.Click();
  EXPECT_EQ(ExplorerListFilter.Cell(row, app::kFavouriteCell), u"");
  EXPECT_EQ(profile.Get(kStationFile, u"A", u"Favorit"), u"");
  EXPECT_EQ(ExplorerListFilter.Count(), 2U);
  Check3.Click();
  Check3.Click();
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"D"});
}

TEST_F(StationViewsTest, FillingTheEditorWritesNoFavouriteMark) {
  SymbolListview.Select(RowNamed(SymbolListview, u"B"));
  state.filling_fields = true;
  Check2.SetValue(CheckValue::kChecked);
  state.filling_fields = false;
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(StationViewsTest, ReturningToTheFullListScrollsToTheSelectedRow) {
  const Text name = u"C";
  SymbolListview.Select(RowNamed(SymbolListview, name));
  Check3.Click();
  controls::RowId scrolled{};
  bool full_list_was_shown = false;
  const auto subscription = SymbolListview.ScrollWanted.Subscribe([&](controls::RowId row) {
    scrolled = row;
    full_list_was_shown = SymbolListview.Visible() && !ExplorerListFilter.Visible();
  });
  Check3.Click();
  EXPECT_EQ(SymbolListview.Cell(scrolled, app::kNameCell), name);
  EXPECT_TRUE(full_list_was_shown);
}

TEST_F(StationViewsTest, SelectedRowIsRememberedOverSeveralFilterViews) {
  SymbolListview.Select(RowNamed(SymbolListview, u"D"));
  Check1.Click();
  Combo1.SetListIndex(2);
  Check3.Click();
  Check1.Click();
  Check1.Click();
  ExpectFullView();
  EXPECT_EQ(SymbolListview.Cell(SymbolListview.SelectedRow(), app::kNameCell), u"D");
}

TEST_F(StationViewsTest, ChoosingAGenreRemembersTheSelectedRowOfTheFullList) {
  Check1.Click();
  SymbolListview.Select(RowNamed(SymbolListview, u"C"));
  Combo1.SetListIndex(2);
  EXPECT_EQ(station_lists.SavedListIndex(), 3U);
}

TEST_F(StationViewsTest, WithoutASelectionBeforeNoneComesAfter) {
  Check3.Click();
  Check3.Click();
  EXPECT_EQ(SymbolListview.SelectedRow(), controls::RowId::kNone);
}

TEST_F(StationViewsTest, SelectedStationIsFoundAgainThoughUnsavedRowsChangeTheirPlaces) {
  AddRow(SymbolListview, u"Aneu");
  SymbolListview.Select(RowNamed(SymbolListview, u"B"));
  Check3.Click();
  Check3.Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"Aneu", u"B", u"C", u"D"}));
  EXPECT_EQ(SymbolListview.Cell(SymbolListview.SelectedRow(), app::kNameCell), u"B");
}

TEST_F(StationViewsTest, ChoosingAGenreInTheFavouritesViewChangesNothingElse) {
  Check3.Click();
  Combo1.SetListIndex(2);
  EXPECT_EQ(Frame2.Caption(), u"Favoriten");
  EXPECT_EQ(Names(ExplorerListFilter), (std::vector<Text>{u"A", u"D"}));
}

TEST_F(StationViewsTest, GenreThatWasTypedIsAFilterToo) {
  AddStation(u"E", u"Eigenes Genre");
  Combo1.Type(u"eigenes genre");
  Check1.Click();
  EXPECT_EQ(Frame2.Caption(), u"Genre-Filter: eigenes genre");
  EXPECT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"E"});
}

TEST_F(StationViewsTest, FavouriteMarkActsOnTheVisibleListOnly) {
  SymbolListview.Select(RowNamed(SymbolListview, u"B"));
  Check3.Click();
  Check2.Click();
  EXPECT_EQ(dialogs.boxes.size(), 1U) << "no row of the visible list is selected";
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_EQ(SymbolListview.Cell(RowNamed(SymbolListview, u"B"), app::kFavouriteCell), u"");
}

TEST_F(StationViewsTest, BoxesAreUncheckedBeforeTheRememberedRowIsSelectedAgain) {
  AddStation(u"A", u"Rock", u"http://a", u"1");
  store.LoadStations(u"");
  SymbolListview.Select(RowNamed(SymbolListview, u"A"));
  Check3.Click();
  std::vector<bool> checked;
  const auto selected = SymbolListview.SelectionChanged.Subscribe([&] {
    const bool is_selected = SymbolListview.SelectedRow() != controls::RowId::kNone;
    if (is_selected) checked.push_back(Check1.Checked() || Check3.Checked());
  });
  views.LeaveFilter(StationViews::Selection::kRemembered);
  EXPECT_FALSE(checked.empty());
  for (const bool one : checked) EXPECT_FALSE(one);
}

TEST_F(StationViewsTest, LeavingTheFilterForAnotherRowDoesNotSelectTheRememberedOne) {
  AddStation(u"A", u"Rock", u"http://a", u"1");
  store.LoadStations(u"");
  SymbolListview.Select(RowNamed(SymbolListview, u"A"));
  Check3.Click();
  views.LeaveFilter(StationViews::Selection::kNone);
  EXPECT_EQ(SymbolListview.SelectedRow(), controls::RowId::kNone);
  EXPECT_TRUE(SymbolListview.Visible());
}

TEST_F(StationViewsTest, LeavingTheFilterDoesNothingInTheFullList) {
  AddStation(u"A", u"Rock", u"http://a");
  store.LoadStations(u"");
  const controls::RowId row = RowNamed(SymbolListview, u"A");
  SymbolListview.Select(row);
  views.LeaveFilter(StationViews::Selection::kNone);
  EXPECT_EQ(SymbolListview.SelectedRow(), row) << "it was not loaded again";
}

}  // namespace
}  // namespace catalogue
