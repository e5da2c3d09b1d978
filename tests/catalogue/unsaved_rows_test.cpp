#include "catalogue/unsaved_rows.h"

#include "catalogue/stored_name.h"
#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using controls::CheckValue;
using controls::ListRow;
using controls::RowId;

using Cells = controls::ListCells;

/// One saved station, "Alt", and one unsaved row, "Neu".
class UnsavedRowsTest : public CatalogueTest {
 protected:
  UnsavedRowsTest() {
    AddStation(u"Alt", u"Rock", u"http://alt", u"", u"3");
    store.LoadStations(u"");
    fresh = AddRow(SymbolListview, u"Neu", u"Dance", u"http://neu");
  }

  void TakeGenreOver(controls::ListView& list, RowId row, const Text& genre) {
    list.Select(row);
    Combo1.SetText(genre);
    Command8[4].Click();
  }
  void TakeLinkOver(controls::ListView& list, RowId row, const Text& link) {
    list.Select(row);
    TextBox1[1].SetText(link);
    Command8[2].Click();
  }
  void Mark(controls::ListView& list, RowId row) {
    list.Select(row);
    Check2.SetValue(CheckValue::kUnchecked);
    Check2.Click();
  }
  void TakeAllOver(controls::ListView& list, RowId row, const Text& name, const Text& link) {
    list.Select(row);
    TextBox1[0].SetText(name);
    TextBox1[1].SetText(link);
    Combo1.SetText(u"Rock");
    Command8[1].Click();
  }
  void Delete(controls::ListView& list, RowId row) {
    list.Select(row);
    Command8[3].Click();
  }
  RowId InView(const Text& name) { return RowNamed(ExplorerListFilter, name); }
  RowId InList(const Text& name) { return RowNamed(SymbolListview, name); }
  std::vector<Cells> List() {
    std::vector<Cells> all;
    for (const ListRow& row : SymbolListview.Rows()) all.push_back(row.cells);
    return all;
  }
  std::vector<Text> UnsavedNames() {
    std::vector<Text> names;
    for (const UnsavedRow& row : unsaved.All()) names.push_back(row.row.cells[app::kNameCell]);
    return names;
  }

  const Cells kOld{u"Alt", u"Rock", u"http://alt", u"", u"", u"3"};
  const Cells kNew{u"Neu", u"Dance", u"http://neu", u"", u"", u""};
  RowId fresh = RowId::kNone;
};

TEST_F(UnsavedRowsTest, RowsThatWereAddedAreUnsavedAndLoadedOnesAreNot) {
  EXPECT_EQ(UnsavedNames(), std::vector<Text>{u"Neu"});
  EXPECT_TRUE(unsaved.Contains(fresh));
  EXPECT_FALSE(unsaved.Contains(InList(u"Alt")));
  store.LoadStations(u"");
  EXPECT_EQ(UnsavedNames(), std::vector<Text>{u"Neu"});
  EXPECT_EQ(List(), (std::vector<Cells>{kOld, kNew}));
}

TEST_F(UnsavedRowsTest, SavingTheListTakingAllOverAndDeletingEndIt) {
  CommandButton1.Click();
  EXPECT_TRUE(unsaved.All().empty());
  const RowId other = AddRow(SymbolListview, u"Noch");
  TakeAllOver(SymbolListview, other, u"Anders", u"http://anders");
  EXPECT_TRUE(unsaved.All().empty());
  Delete(SymbolListview, AddRow(SymbolListview, u"Weg"));
  EXPECT_TRUE(unsaved.All().empty());
}

TEST_F(UnsavedRowsTest, RowOfWhichSingleCellsWereWrittenStaysOneRowWithAllItsCells) {
  TakeGenreOver(SymbolListview, fresh, u"Jazz");
  Mark(SymbolListview, fresh);
  store.LoadStations(u"");
  store.LoadStations(u"");
  EXPECT_EQ(List(), (std::vector<Cells>{kOld, {u"Neu", u"Jazz", u"http://neu", u"1", u"", u""}}));
  EXPECT_EQ(UnsavedNames(), std::vector<Text>{u"Neu"});
}

TEST_F(UnsavedRowsTest, CellsThatWereWrittenSinglyAreReadBackAndNoOthers) {
  Mark(SymbolListview, fresh);
  profile.Set(kStationFile, u"Neu", u"Favorit", u"0");
  profile.Set(kStationFile, u"Neu", u"Link", u"http://von anderswo");
  store.LoadStations(u"");
  EXPECT_EQ(List()[1], (Cells{u"Neu", u"Dance", u"http://neu", u"0", u"", u""}));
}

TEST_F(UnsavedRowsTest, CellThatAFilterViewWritesReachesTheRow) {
  Mark(SymbolListview, fresh);
  Check3.Click();
  ExplorerListFilter.Select(InView(u"Neu"));
  Check2.SetValue(CheckValue::kUnchecked);
  TakeLinkOver(ExplorerListFilter, InView(u"Neu"), u"http://anders");
  Check3.Click();
  EXPECT_EQ(List()[1], (Cells{u"Neu", u"Dance", u"http://anders", u"", u"", u""}));
}

TEST_F(UnsavedRowsTest, RowGoesWhenAFilterViewDeletesTheSectionThatItsCellsMade) {
  Mark(SymbolListview, fresh);
  Check3.Click();
  Delete(ExplorerListFilter, InView(u"Neu"));
  EXPECT_TRUE(SymbolListview.Contains(fresh)) << "until the list is loaded again";
  EXPECT_TRUE(unsaved.All().empty());
  Check3.Click();
  EXPECT_EQ(List(), std::vector<Cells>{kOld});
}

TEST_F(UnsavedRowsTest, OfSeveralRowsOnlyTheOneGoesWhoseSectionAFilterViewDeletes) {
  const std::vector<Text> names{u"Neu", u"Neu 2", u"Neu 3", u"Neu 4"};
  for (std::size_t index = 1; index < names.size(); ++index) AddRow(SymbolListview, names[index]);
  for (const Text& name : names) Mark(SymbolListview, InList(name));
  std::vector<Text> left = names;
  for (const char16_t* gone : {u"Neu 2", u"Neu", u"Neu 4"}) {
    Check3.Click();
    Delete(ExplorerListFilter, InView(gone));
    std::erase(left, gone);
    EXPECT_EQ(UnsavedNames(), left);
    Check3.Click();
    EXPECT_EQ(UnsavedNames(), left) << "and after the list was loaded again";
  }
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"Alt", u"Neu 3"}));
}

TEST_F(UnsavedRowsTest, RowGoesWhenAFilterViewRenamesItsStation) {
  Mark(SymbolListview, fresh);
  Check3.Click();
  TakeAllOver(ExplorerListFilter, InView(u"Neu"), u"Umbenannt", u"http://um");
  Check3.Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"Alt", u"Umbenannt"}));
}

TEST_F(UnsavedRowsTest, StationThatAFilterViewAddsInTheDeletedOnesPlaceIsARowOfItsOwn) {
  Mark(SymbolListview, fresh);
  Check3.Click();
  Delete(ExplorerListFilter, InView(u"Neu"));
  TakeAllOver(ExplorerListFilter, RowId::kNone, u"Neu", u"http://ganz neu");
  Check3.Click();
  ASSERT_EQ(Names(SymbolListview), (std::vector<Text>{u"Alt", u"Neu"}));
  EXPECT_EQ(List()[1][app::kLinkCell], u"http://ganz neu");
  EXPECT_TRUE(unsaved.All().empty());
}

TEST_F(UnsavedRowsTest, WholeStationThatAFilterViewWritesStandsBesideTheRowOfItsName) {
  Mark(SymbolListview, fresh);
  Check3.Click();
  TakeAllOver(ExplorerListFilter, RowId::kNone, u"Neu", u"http://ganz neu");
  Check3.Click();
  ASSERT_EQ(Names(SymbolListview), (std::vector<Text>{u"Alt", u"Neu", u"Neu"}));
  EXPECT_EQ(List()[1][app::kLinkCell], u"http://ganz neu");
  EXPECT_EQ(List()[2][app::kLinkCell], u"http://neu");
  EXPECT_EQ(List()[2][app::kFavouriteCell], u"1") << "its own mark, not the other station's";
}

TEST_F(UnsavedRowsTest, StationThatAFilterViewRenamesStandsBesideTheRowOfThatName) {
  TakeGenreOver(SymbolListview, fresh, u"Rock");
  Combo1.SetText(u"Rock");
  Check1.Click();
  TakeAllOver(ExplorerListFilter, InView(u"Alt"), u"Neu", u"http://anders");
  Check1.Click();
  EXPECT_EQ(SymbolListview.Count(), 2U);
  EXPECT_EQ(UnsavedNames(), std::vector<Text>{u"Neu"});
  EXPECT_EQ(unsaved.PartOf(InList(u"Neu")).sections, std::vector<Text>{});
}

TEST_F(UnsavedRowsTest, StationWithoutANameThatAFilterViewWritesIsKeptInTheFullListWithItsNumber) {
  Check3.Click();
  ExplorerListFilter.Select(RowId::kNone);
  TextBox1[0].SetText(u" ");
  TextBox1[1].SetText(u"http://namenlos");
  UpDownTextBox1.SetText(u"4");
  Command8[1].Click();
  const RowId kept = InList(u" ");
  EXPECT_EQ(SymbolListview.Cell(kept, app::kM3uNumberCell), u"4");
  EXPECT_EQ(unsaved.PartOf(kept).sections, std::vector<Text>{u" "});
}

TEST_F(UnsavedRowsTest, DeletedRowIsNoUnsavedOne) {
  Delete(SymbolListview, fresh);
  EXPECT_FALSE(unsaved.Contains(fresh));
}

TEST_F(UnsavedRowsTest, OfTwoEqualSectionsARowThatOwnsOneLeavesTheOtherToTheFile) {
  profile.files[kStationFile] = {{u"A", {{u"Link", u"http://1"}}}, {u"A", {{u"Link", u"http://2"}}}};
  SymbolListview.Clear();
  unsaved.Clear();
  unsaved.Mark(AddRow(SymbolListview, u"A", u"", u"http://eigen"), {{}, {u"A"}});
  store.LoadStations(u"");
  EXPECT_EQ(SymbolListview.Count(), 2U);
}

TEST_F(UnsavedRowsTest, SecondRowOfASavedStationsNameKeepsItsCellsAndTheFirstKeepsIts) {
  const RowId second = AddRow(SymbolListview, u"ALT", u"Jazz", u"http://zweiter");
  Mark(SymbolListview, second);
  store.LoadStations(u"");
  EXPECT_EQ(List(), (std::vector<Cells>{{u"Alt", u"Rock", u"http://alt", u"1", u"", u"3"},
                                        {u"ALT", u"Jazz", u"http://zweiter", u"1", u"", u""},
                                        kNew}));
}

TEST_F(UnsavedRowsTest, SecondRowStaysWhenAFilterViewDeletesTheFirst) {
  const RowId second = AddRow(SymbolListview, u"Alt", u"Jazz", u"http://zweiter");
  Mark(SymbolListview, second);
  Check3.Click();
  Delete(ExplorerListFilter, InView(u"Alt"));
  Check3.Click();
  EXPECT_EQ(List(), (std::vector<Cells>{{u"Alt", u"Jazz", u"http://zweiter", u"1", u"", u""}, kNew}));
}

TEST_F(UnsavedRowsTest, DeletingASecondRowOfASavedStationsNameLeavesTheFirstAsAnUnsavedOne) {
  Delete(SymbolListview, AddRow(SymbolListview, u"Alt"));
  EXPECT_FALSE(profile.HasSection(kStationFile, u"Alt"));
  EXPECT_EQ(UnsavedNames(), (std::vector<Text>{u"Alt", u"Neu"}));
  store.LoadStations(u"");
  EXPECT_EQ(List(), (std::vector<Cells>{kOld, kNew}));
}

TEST_F(UnsavedRowsTest, SectionThatComesBackAfterThatIsTheRowsOwn) {
  const auto section = ini.CopyStationSection(u"Alt");
  Delete(SymbolListview, AddRow(SymbolListview, u"Alt"));
  profile.InsertSection(*section, kStationFile);
  store.LoadStations(u"");
  EXPECT_EQ(List(), (std::vector<Cells>{kOld, kNew}));
}

TEST_F(UnsavedRowsTest, OfTwoEqualSectionsTheOtherStaysOneRowWhenTheFirstIsDeleted) {
  profile.files[kStationFile] = {{u"A", {{u"Link", u"http://1"}}}, {u"A", {{u"Link", u"http://2"}}}};
  store.LoadStations(u"");
  Delete(SymbolListview, InList(u"A"));
  store.LoadStations(u"");
  EXPECT_EQ(List(), (std::vector<Cells>{{u"A", u"", u"http://2", u"", u"", u""}, kNew}));
}

TEST_F(UnsavedRowsTest, RenamingASecondRowLeavesTheFirstAsAnUnsavedOne) {
  TakeAllOver(SymbolListview, AddRow(SymbolListview, u"Alt"), u"Zweiter", u"http://zweiter");
  store.LoadStations(u"");
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"Alt", u"Neu", u"Zweiter"}));
  EXPECT_EQ(List()[0], kOld);
}

TEST_F(UnsavedRowsTest, RowThatIsWrittenWholeOverASavedOneTakesItsPlace) {
  TakeAllOver(SymbolListview, fresh, u"Alt", u"http://darüber");
  store.LoadStations(u"");
  ASSERT_EQ(Names(SymbolListview), std::vector<Text>{u"Alt"});
  EXPECT_EQ(List()[0][app::kLinkCell], u"http://darüber");
}

TEST_F(UnsavedRowsTest, RowWithoutANameThatTheFileCanListStaysUnsaved) {
  SymbolListview.SetCell(fresh, app::kNameCell, u" \t");
  CommandButton1.Click();
  store.LoadStations(u"");
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u" \t", u"Alt"}));
  EXPECT_EQ(UnsavedNames(), std::vector<Text>{u" \t"});
}

TEST_F(UnsavedRowsTest, RowWhoseCellsCouldNotBeWrittenIsKeptAsItIs) {
  profile.fail_writes = true;
  Mark(SymbolListview, fresh);
  TakeLinkOver(SymbolListview, fresh, u"http://anders");
  store.LoadStations(u"");
  EXPECT_EQ(List()[1], (Cells{u"Neu", u"Dance", u"http://anders", u"1", u"", u""}));
}

TEST_F(UnsavedRowsTest, EmptyingTheListDropsWhatTheFileHoldsNothingOf) {
  Mark(SymbolListview, AddRow(SymbolListview, u"Halb", u"Jazz", u"http://halb"));
  unsaved.ListIsEmptied();
  SymbolListview.Clear();
  EXPECT_EQ(UnsavedNames(), std::vector<Text>{u"Halb"}) << "it comes back, as saved rows do";
  store.LoadStations(u"");
  EXPECT_EQ(List(), (std::vector<Cells>{kOld, {u"Halb", u"Jazz", u"http://halb", u"1", u"", u""}}));
}

TEST_F(UnsavedRowsTest, RowThatWouldComeBackGoesWithItsSection) {
  for (const bool by_saving : {false, true}) {
    Mark(SymbolListview, AddRow(SymbolListview, u"Halb", u"Jazz", u"http://halb"));
    unsaved.ListIsEmptied();
    SymbolListview.Clear();
    if (by_saving) {
      AddRow(SymbolListview, u"halb", u"", u"http://anderer");
      CommandButton1.Click();
    } else {
      Check3.Click();
      Delete(ExplorerListFilter, InView(u"Halb"));
      Check3.Click();
    }
    EXPECT_TRUE(unsaved.All().empty());
    EXPECT_EQ(InList(u"Halb"), RowId::kNone);
  }
}

TEST_F(UnsavedRowsTest, RowThatWouldComeBackTakesWhatAFilterViewWrites) {
  Mark(SymbolListview, fresh);
  unsaved.ListIsEmptied();
  SymbolListview.Clear();
  Check3.Click();
  TakeLinkOver(ExplorerListFilter, InView(u"Neu"), u"http://anders");
  Check3.Click();
  EXPECT_EQ(List()[1], (Cells{u"Neu", u"Dance", u"http://anders", u"1", u"", u""}));
}

TEST_F(UnsavedRowsTest, RowsThatWerePutBackBeforeTheFirstLoadingAreThoseThatWereTakenOut) {
  Mark(SymbolListview, fresh);
  const std::vector<UnsavedRow> rows = unsaved.All();
  SymbolListview.Clear();
  unsaved.Clear();
  unsaved.PutBack(rows);
  profile.Set(kStationFile, u"Neu", u"Favorit", u"0");
  store.LoadStations(u"");
  EXPECT_EQ(List(), (std::vector<Cells>{kOld, {u"Neu", u"Dance", u"http://neu", u"0", u"", u""}}));
  EXPECT_EQ(UnsavedNames(), std::vector<Text>{u"Neu"});
}

TEST_F(UnsavedRowsTest, NamesAreComparedAsTheFileStoresThem) {
  const std::vector<std::pair<Text, Text>> equal = {
      {u"Radio", u" Radio\t"}, {u"Radio", u"Radio\r"}, {u"Radio", u"Ra\ndio"},           {u"Radio", u"rADIO"},
      {u"Größe", u"GRÖßE"},    {u"Радио", u"?????"},   {u"Radio", Text(u"Radio\0x", 7)}, {u"", u" \r\n\t"}};
  for (const auto& [one, other] : equal)
    EXPECT_EQ(StoredName(conversion, one), StoredName(conversion, other));
  for (const auto& [one, other] : {std::pair<Text, Text>(u"Ra dio", u"Radio"), {u"a]", u"a"}, {u"é", u"e"}}) {
    EXPECT_NE(StoredName(conversion, one), StoredName(conversion, other));
  }
}

}  // namespace
}  // namespace catalogue
