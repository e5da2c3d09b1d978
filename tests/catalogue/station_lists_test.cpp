#include "catalogue/station_lists.h"

#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using controls::SortKind;

using StationListsTest = CatalogueTest;

TEST_F(StationListsTest, ColumnsStandInTheirOrderWithTheirWidths) {
  for (const controls::ListView* list : {&SymbolListview, &ExplorerListFilter}) {
    std::vector<std::pair<Text, int>> columns;
    for (const controls::ListColumn& column : list->Columns())
      columns.emplace_back(column.caption, column.width);
    EXPECT_EQ(columns, (std::vector<std::pair<Text, int>>{{u"Station", 300},
                                                          {u"Genre", 120},
                                                          {u"WebLink", 120},
                                                          {u"Favorit", 120},
                                                          {u"Titel", 200},
                                                          {u"M3U Nr.", 120}}));
  }
}

TEST_F(StationListsTest, LinkAndTitleTakeTheSpareRoomAndLinkAndFavouriteHaveALookOfTheirOwn) {
  using controls::CellLook;
  const auto& columns = SymbolListview.Columns();
  for (std::size_t column = 0; column < columns.size(); ++column) {
    const bool takes = columns[column].spare_room == controls::SpareRoom::kTakes;
    EXPECT_EQ(takes, column == app::kLinkCell || column == app::kTitleCell) << column;
    const CellLook look = column == app::kLinkCell        ? CellLook::kAddress
                          : column == app::kFavouriteCell ? CellLook::kMark
                                                          : CellLook::kText;
    EXPECT_EQ(columns[column].look, look) << column;
  }
}

TEST_F(StationListsTest, NamesSortInNaturalOrder) {
  for (const char16_t* name : {u"Radio 10", u"Radio 2", u"radio 1"}) AddRow(SymbolListview, name);
  SymbolListview.ClickHeader(0);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"radio 1", u"Radio 2", u"Radio 10"}));
}

TEST_F(StationListsTest, SecondClickOnAHeaderSortsDescendingAndAnotherColumnStartsAscending) {
  AddRow(SymbolListview, u"B", u"Dance");
  AddRow(SymbolListview, u"A", u"Rock");
  SymbolListview.ClickHeader(1);
  EXPECT_EQ(SymbolListview.GetSortDirection(), controls::SortDirection::kAscending);
  SymbolListview.ClickHeader(1);
  EXPECT_EQ(SymbolListview.SortColumn(), 1);
  EXPECT_EQ(SymbolListview.GetSortDirection(), controls::SortDirection::kDescending);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B"}));
  SymbolListview.ClickHeader(0);
  EXPECT_EQ(SymbolListview.SortColumn(), 0);
  EXPECT_EQ(SymbolListview.GetSortDirection(), controls::SortDirection::kAscending);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B"}));
}

TEST_F(StationListsTest, EachListHasItsOwnOrder) {
  AddRow(SymbolListview, u"A");
  AddRow(SymbolListview, u"B");
  AddRow(ExplorerListFilter, u"B");
  AddRow(ExplorerListFilter, u"A");
  ExplorerListFilter.ClickHeader(0);
  ExplorerListFilter.ClickHeader(0);
  EXPECT_EQ(Names(ExplorerListFilter), (std::vector<Text>{u"B", u"A"}));
  EXPECT_EQ(SymbolListview.SortColumn(), -1);
}

TEST_F(StationListsTest, ParentRowsSortFirstWhateverTheDirection) {
  for (const char16_t* name : {u"B", u"..", u"A", u".."}) AddRow(SymbolListview, name);
  SymbolListview.ClickHeader(0);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"..", u"..", u"A", u"B"}));
  SymbolListview.ClickHeader(0);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"..", u"..", u"B", u"A"}));
}

TEST_F(StationListsTest, ParentRowIsKnownByItsTextWhateverColumnSorts) {
  AddRow(SymbolListview, u"B", u"A");
  AddRow(SymbolListview, u"A", u"..");
  AddRow(SymbolListview, u"..", u"Z");
  AddRow(SymbolListview, u"C", u"!");
  SymbolListview.ClickHeader(1);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"..", u"C", u"A", u"B"}));
  SymbolListview.ClickHeader(1);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"..", u"B", u"A", u"C"}));
}

TEST_F(StationListsTest, EveryColumnSortsInNaturalOrder) {
  for (controls::ListView* list : {&SymbolListview, &ExplorerListFilter}) {
    ASSERT_EQ(list->Columns().size(), app::kStationCells);
    for (std::size_t cell = 0; cell < app::kStationCells; ++cell) {
      list->Clear();
      for (const char16_t* text : {u"Radio 10", u"radio 1", u"9", u"02.01.2024", u"Radio 2", u"10.01.2023"}) {
        controls::ListRow row;
        row.cells.Set(cell, text);
        list->AddRow(row);
      }
      list->ClickHeader(static_cast<int>(cell));
      std::vector<Text> texts;
      for (const controls::ListRow& row : list->Rows()) texts.push_back(row.cells[cell]);
      EXPECT_EQ(texts,
                (std::vector<Text>{u"02.01.2024", u"9", u"10.01.2023", u"radio 1", u"Radio 2", u"Radio 10"}))
          << cell;
    }
  }
}

TEST_F(StationListsTest, RowsThatCompareEqualKeepTheirOrder) {
  AddRow(SymbolListview, u"B", u"Rock");
  AddRow(SymbolListview, u"A", u"rock");
  SymbolListview.ClickHeader(1);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"B", u"A"}));
}

TEST_F(StationListsTest, ManyRowsThatCompareEqualKeepTheirOrderInBothDirections) {
  std::vector<Text> names{u"B", u"A", u"C"};
  for (char16_t name = u'D'; name < u'Z'; ++name) names.insert(names.begin() + 1, Text(1, name));
  for (const Text& name : names) AddRow(SymbolListview, name, u"Rock");
  SymbolListview.ClickHeader(1);
  EXPECT_EQ(Names(SymbolListview), names);
  SymbolListview.ClickHeader(1);
  EXPECT_EQ(Names(SymbolListview), names);
  SymbolListview.Clear();
  for (const char16_t* name : {u"B", u"A", u"C"}) AddRow(SymbolListview, name, u"Rock");
  for (int click = 0; click < 2; ++click) {
    SymbolListview.ClickHeader(1);
    EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"B", u"A", u"C"}));
  }
}

controls::ListRow RowOf(const Text& text) {
  controls::ListRow row;
  row.cells.Set(0, text);
  return row;
}

class SortKindTest : public CatalogueTest {
 protected:
  std::int32_t Compare(SortKind kind, const Text& first, const Text& second) {
    controls::ListView list;
    list.AddColumn({u"x", 10, kind});
    return station_lists.CompareListItems2(list, RowOf(first), RowOf(second), 0);
  }
};

TEST_F(SortKindTest, NumbersCompareByTheirValue) {
  EXPECT_EQ(Compare(SortKind::kNumbers, u"9", u"10"), -1);
  EXPECT_EQ(Compare(SortKind::kNumbers, u"1,50", u"1.5"), 0);
  EXPECT_EQ(Compare(SortKind::kNumbers, u"3", u"-3"), 1);
}

TEST_F(SortKindTest, TextThatIsNoNumberCountsAsZero) {
  EXPECT_EQ(Compare(SortKind::kNumbers, u"abc", u"0"), 0);
  EXPECT_EQ(Compare(SortKind::kNumbers, u"abc", u"1"), -1);
}

TEST_F(SortKindTest, DatesCompareByTheirTime) {
  EXPECT_EQ(Compare(SortKind::kDates, u"02.01.2024", u"10.01.2023"), 1);
  EXPECT_EQ(Compare(SortKind::kDates, u"2024-02-29", u"01.03.2024"), -1);
  EXPECT_EQ(Compare(SortKind::kDates, u"01.01.2024 10:00", u"2024-01-01 10:00:00"), 0);
  EXPECT_EQ(Compare(SortKind::kDates, u"kein Datum", u"01.01.0001"), -1);
}

TEST_F(SortKindTest, AnyOtherKindComparesInNaturalOrder) {
  EXPECT_LT(Compare(SortKind{7}, u"Radio 2", u"Radio 10"), 0);
  EXPECT_LT(Compare(SortKind::kNaturalOrder, u"Äpfel", u"Zebra"), 0);
  EXPECT_EQ(Compare(SortKind::kNaturalOrder, u"radio 2", u"RADIO 2"), 0);
}

TEST_F(StationListsTest, SaveListindexCountsFromOneAndKeepsItsMemoryWithoutASelection) {
  AddRow(SymbolListview, u"A");
  const auto second = AddRow(SymbolListview, u"B");
  station_lists.SaveListindex();
  EXPECT_EQ(station_lists.SavedListIndex(), 0U);
  SymbolListview.Select(second);
  station_lists.SaveListindex();
  EXPECT_EQ(station_lists.SavedListIndex(), 2U);
  SymbolListview.Select(controls::RowId::kNone);
  station_lists.SaveListindex();
  EXPECT_EQ(station_lists.SavedListIndex(), 2U);
}

TEST_F(StationListsTest, RestoringSelectsTheRememberedRowAndScrollsToIt) {
  AddRow(SymbolListview, u"A");
  const auto second = AddRow(SymbolListview, u"B");
  SymbolListview.Select(second);
  station_lists.SaveListindex();
  SymbolListview.Select(controls::RowId::kNone);
  controls::RowId scrolled{};
  const auto subscription =
      SymbolListview.ScrollWanted.Subscribe([&](controls::RowId row) { scrolled = row; });
  station_lists.RestoreListindex();
  EXPECT_EQ(SymbolListview.SelectedRow(), second);
  EXPECT_EQ(scrolled, second);
}

TEST_F(StationListsTest, RestoringFindsTheRememberedStationWhenAnotherStandsInItsPlace) {
  const auto first = AddRow(SymbolListview, u"A");
  const auto second = AddRow(SymbolListview, u"B");
  AddRow(SymbolListview, u"C");
  SymbolListview.Select(second);
  station_lists.SaveListindex();
  SymbolListview.RemoveRow(first);
  SymbolListview.Select(controls::RowId::kNone);
  station_lists.RestoreListindex();
  EXPECT_EQ(SymbolListview.SelectedRow(), second);
}

TEST_F(StationListsTest, EverySwitchRemembersItsOwnStation) {
  for (const char16_t* name : {u"A", u"B", u"C", u"D"}) AddRow(SymbolListview, name);
  for (const char16_t* name : {u"B", u"D", u"C"}) {
    SymbolListview.Select(RowNamed(SymbolListview, name));
    station_lists.SaveListindex();
  }
  SymbolListview.RemoveRow(RowNamed(SymbolListview, u"A"));
  SymbolListview.Select(controls::RowId::kNone);
  station_lists.RestoreListindex();
  EXPECT_EQ(SymbolListview.Cell(SymbolListview.SelectedRow(), app::kNameCell), u"C");
}

TEST_F(StationListsTest, RestoringAStationThatIsGoneSelectsWhatStandsInItsPlace) {
  AddRow(SymbolListview, u"A");
  const auto second = AddRow(SymbolListview, u"B");
  const auto third = AddRow(SymbolListview, u"C");
  SymbolListview.Select(second);
  station_lists.SaveListindex();
  SymbolListview.RemoveRow(second);
  station_lists.RestoreListindex();
  EXPECT_EQ(SymbolListview.SelectedRow(), third);
}

TEST_F(StationListsTest, RestoringARowThatIsGoneDoesNothing) {
  const auto only = AddRow(SymbolListview, u"A");
  SymbolListview.Select(only);
  station_lists.SaveListindex();
  SymbolListview.Clear();
  station_lists.RestoreListindex();
  EXPECT_EQ(SymbolListview.SelectedRow(), controls::RowId::kNone);
}

TEST_F(StationListsTest, SelectionInEitherListShowsTheDetailsAndLosingItDoesNot) {
  const auto row = AddRow(SymbolListview, u"A");
  const auto filtered = AddRow(ExplorerListFilter, u"A");
  SymbolListview.Select(row);
  ExplorerListFilter.Select(filtered);
  EXPECT_EQ(details_shown, 2);
  SymbolListview.Clear();
  EXPECT_EQ(details_shown, 2);
}

TEST_F(StationListsTest, ClickOnTheSelectedRowOfEitherListShowsItsDetailsAgain) {
  for (controls::ListView* list : {&SymbolListview, &ExplorerListFilter}) {
    const auto row = AddRow(*list, u"A");
    list->ClickRow(row);
    list->ClickRow(row);
  }
  EXPECT_EQ(details_shown, 4);
}

TEST_F(StationListsTest, DoubleClickInEitherListStartsPlaying) {
  SymbolListview.DoubleClick(AddRow(SymbolListview, u"A"));
  ExplorerListFilter.DoubleClick(AddRow(ExplorerListFilter, u"A"));
  EXPECT_EQ(started, 2);
}

TEST_F(StationListsTest, OfTwoRowsOfANameTheRememberedOneIsSelectedAgain) {
  AddRow(SymbolListview, u"A");
  const controls::RowId second = AddRow(SymbolListview, u"A");
  SymbolListview.Select(second);
  station_lists.SaveListindex();
  SymbolListview.Select(controls::RowId::kNone);
  station_lists.RestoreListindex();
  EXPECT_EQ(SymbolListview.SelectedRow(), second);
}

TEST_F(StationListsTest, SelectionStaysWhenNothingIsRememberedOrTheRememberedRowIsGone) {
  const controls::RowId first = AddRow(SymbolListview, u"A");
  const controls::RowId last = AddRow(SymbolListview, u"B");
  SymbolListview.Select(first);
  station_lists.RestoreListindex();
  EXPECT_EQ(SymbolListview.SelectedRow(), first);
  SymbolListview.Select(last);
  station_lists.SaveListindex();
  SymbolListview.RemoveRow(last);
  SymbolListview.Select(first);
  station_lists.RestoreListindex();
  EXPECT_EQ(SymbolListview.SelectedRow(), first);
}

TEST_F(StationListsTest, SortingMakesTheDetailsStale) {
  SymbolListview.ClickHeader(0);
  EXPECT_TRUE(state.details_are_stale);
}

TEST_F(StationListsTest, SelectionStaysWithItsRowWhenTheListIsSorted) {
  const auto b = AddRow(SymbolListview, u"B");
  AddRow(SymbolListview, u"A");
  SymbolListview.Select(b);
  SymbolListview.ClickHeader(0);
  EXPECT_EQ(SymbolListview.SelectedRow(), b);
  EXPECT_EQ(SymbolListview.IndexOf(b), 1U);
}

}  // namespace
}  // namespace catalogue
