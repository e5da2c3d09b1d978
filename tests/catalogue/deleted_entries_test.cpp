#include "catalogue/deleted_entries.h"

#include "app/state/status_sentences.h"
#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using controls::CheckValue;
using controls::ListRow;
using controls::ListView;
using controls::RowId;
using Cells = controls::ListCells;
using Notice = test_support::FakeNotices::Notice;

class DeletedEntriesTest : public CatalogueTest {
 protected:
  DeletedEntriesTest() {
    AddStation(u"A", u"Rock", u"http://a", u"1", u"2");
    AddStation(u"B", u"Dance", u"http://b", u"1");
    AddStation(u"C", u"Rock", u"http://c", u"", u"3");
    profile.Set(kStationFile, u"B", u"Fremd", u"bleibt");
    store.LoadStations(u"");
    whole_file = profile.files[kStationFile];
  }

  void Delete(ListView& list, const Text& name) {
    ASSERT_TRUE(list.Select(RowNamed(list, name)));
    Command8[3].Click();
  }
  std::vector<Cells> CellsOf(const ListView& list) {
    std::vector<Cells> all;
    for (const ListRow& row : list.Rows()) all.push_back(row.cells);
    return all;
  }
  bool FileIsWhole() {
    const auto& file = profile.files[kStationFile];
    return std::equal(
        file.begin(), file.end(), whole_file.begin(), whole_file.end(),
        [](const auto& one, const auto& other) { return one.name == other.name && one.keys == other.keys; });
  }
  void ExpectNotice(platform::TextView sentence, const Text& argument) {
    EXPECT_EQ(notices.notices, (std::vector<Notice>{{Text(sentence), {argument}}}));
    notices.notices.clear();
  }

  const Cells kA{u"A", u"Rock", u"http://a", u"1", u"", u"2"};
  const Cells kB{u"B", u"Dance", u"http://b", u"1", u"", u""};
  const Cells kC{u"C", u"Rock", u"http://c", u"", u"", u"3"};
  std::vector<test_support::MemoryProfile::Section> whole_file;
};

TEST_F(DeletedEntriesTest, LastDeletedEntryComesBackIntoItsPlaceWithEveryKeyAndIsNotSelected) {
  Delete(SymbolListview, u"B");
  EXPECT_FALSE(FileIsWhole());
  RowId shown = RowId::kNone;
  const auto subscription = SymbolListview.ScrollWanted.Subscribe([&](RowId row) { shown = row; });
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kB, kC}));
  EXPECT_TRUE(FileIsWhole());
  EXPECT_TRUE(unsaved.All().empty());
  EXPECT_EQ(SymbolListview.SelectedRow(), RowId::kNone);
  EXPECT_EQ(shown, SymbolListview.RowAt(1));
  ExpectNotice(app::sentences::kBroughtBack, u"B");
  store.LoadStations(u"");
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kB, kC}));
}

TEST_F(DeletedEntriesTest, EntryOfTheFullListComesBackThereAlone) {
  Delete(SymbolListview, u"A");
  UndoDelete.Click();
  EXPECT_EQ(SymbolListview.Count(), 3U);
  EXPECT_EQ(ExplorerListFilter.Count(), 0U);
}

TEST_F(DeletedEntriesTest, EntriesComeBackOneByOneTheLastFirst) {
  EXPECT_FALSE(UndoDelete.Enabled());
  for (const char16_t* name : {u"B", u"A", u"C"}) Delete(SymbolListview, name);
  for (const auto& names : {std::vector<Text>{u"C"}, {u"A", u"C"}, {u"A", u"B", u"C"}}) {
    EXPECT_TRUE(UndoDelete.Enabled());
    UndoDelete.Click();
    EXPECT_EQ(Names(SymbolListview), names);
  }
  EXPECT_FALSE(UndoDelete.Enabled());
  EXPECT_TRUE(FileIsWhole());
  deleted.BringBack();
  EXPECT_EQ(SymbolListview.Count(), 3U);
}

TEST_F(DeletedEntriesTest, EntryThatAFilterViewDeletedComesBackThereAndInTheFullList) {
  Check3.Click();
  Delete(ExplorerListFilter, u"A");
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(ExplorerListFilter), (std::vector<Cells>{kA, kB}));
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kB, kC}));
  EXPECT_TRUE(FileIsWhole());
  Check3.Click();
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kB, kC}));
}

TEST_F(DeletedEntriesTest, EntryThatAFilterViewEditedAndDeletedComesBackInTheFullListAsTheFileHasIt) {
  Check3.Click();
  ExplorerListFilter.Select(RowNamed(ExplorerListFilter, u"A"));
  TextBox1[1].SetText(u"http://anders");
  Command8[2].Click();
  Delete(ExplorerListFilter, u"A");
  Check3.Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"B", u"C"}));
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(SymbolListview),
            (std::vector<Cells>{{u"A", u"Rock", u"http://anders", u"1", u"", u"2"}, kB, kC}));
  EXPECT_TRUE(unsaved.All().empty());
}

TEST_F(DeletedEntriesTest, EntryOfTheFullListComesBackInAFilterViewThatItBelongsTo) {
  Delete(SymbolListview, u"A");
  Delete(SymbolListview, u"C");
  Check3.Click();
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(ExplorerListFilter), (std::vector<Cells>{kB})) << "C is no favourite";
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(ExplorerListFilter), (std::vector<Cells>{kB, kA}));
  Check3.Click();
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kB, kC}));
}

TEST_F(DeletedEntriesTest, EntryOfOneFilterViewComesBackInAnotherThatItBelongsTo) {
  Check3.Click();
  Delete(ExplorerListFilter, u"A");
  Combo1.SetText(u"Rock");
  Check1.Click();
  ASSERT_EQ(Names(ExplorerListFilter), std::vector<Text>{u"C"});
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(ExplorerListFilter), (std::vector<Cells>{kC, kA}));
}

TEST_F(DeletedEntriesTest, EntryThatOnlyAFilterViewShowedComesBackInTheFullListToo) {
  SymbolListview.Clear();
  Check3.Click();
  Delete(ExplorerListFilter, u"B");
  Check3.Click();
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kC, kB}));
  EXPECT_TRUE(unsaved.All().empty());
}

TEST_F(DeletedEntriesTest, UnsavedRowComesBackUnsavedWithAllItsCells) {
  SymbolListview.InsertRow(1, {});
  const RowId row = SymbolListview.RowAt(1);
  const Cells fresh{u"Neu", u"Jazz", u"http://neu", u"", u"Titel", u"5"};
  for (std::size_t cell = 0; cell < app::kStationCells; ++cell)
    SymbolListview.SetCell(row, cell, fresh[cell]);
  settings.CatalogueChanged = true;
  Delete(SymbolListview, u"Neu");
  EXPECT_TRUE(unsaved.All().empty());
  CommandButton1.Click();
  ASSERT_FALSE(settings.CatalogueChanged);
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, fresh, kB, kC}));
  EXPECT_EQ(unsaved.All().size(), 1U);
  EXPECT_FALSE(profile.HasSection(kStationFile, u"Neu"));
  EXPECT_TRUE(settings.CatalogueChanged) << "the closing question asks about it again";
}

TEST_F(DeletedEntriesTest, UnsavedRowThatTheFileHeldInPartComesBackAsItWas) {
  for (const bool in_view : {false, true}) {
    const Text name = in_view ? u"Zwei" : u"Eins";
    SymbolListview.Select(AddRow(SymbolListview, name, u"Jazz", u"http://neu"));
    Check2.SetValue(CheckValue::kUnchecked);
    Check2.Click();
    if (in_view) Check3.Click();
    Delete(lists.Active(), name);
    EXPECT_FALSE(profile.HasSection(kStationFile, name));
    UndoDelete.Click();
    EXPECT_EQ(profile.Get(kStationFile, name, u"Favorit"), u"1");
    if (in_view) Check3.Click();
    store.LoadStations(u"");
    EXPECT_EQ(CellsOf(SymbolListview).back(), (Cells{name, u"Jazz", u"http://neu", u"1", u"", u""}));
    EXPECT_EQ(SymbolListview.Count(), in_view ? 5U : 4U);
    EXPECT_TRUE(unsaved.Contains(RowNamed(SymbolListview, name)));
  }
}

TEST_F(DeletedEntriesTest, UnsavedRowThatAFilterViewDeletedComesBackAfterTheListWasLoadedAgain) {
  SymbolListview.Select(AddRow(SymbolListview, u"Neu", u"Jazz", u"http://neu"));
  Check2.SetValue(CheckValue::kUnchecked);
  Check2.Click();
  Check3.Click();
  Delete(ExplorerListFilter, u"Neu");
  Check3.Click();
  ASSERT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"C"}));
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(SymbolListview),
            (std::vector<Cells>{kA, kB, kC, {u"Neu", u"Jazz", u"http://neu", u"1", u"", u""}}));
  store.LoadStations(u"");
  EXPECT_EQ(SymbolListview.Count(), 4U);
  EXPECT_TRUE(unsaved.Contains(RowNamed(SymbolListview, u"Neu")));
}

TEST_F(DeletedEntriesTest, UnsavedRowThatWasWaitingForTheNextLoadingComesBackWhole) {
  SymbolListview.Select(AddRow(SymbolListview, u"Neu", u"Jazz", u"http://neu"));
  Check2.SetValue(CheckValue::kUnchecked);
  Check2.Click();
  unsaved.ListIsEmptied();
  SymbolListview.Clear();
  Check3.Click();
  Delete(ExplorerListFilter, u"Neu");
  UndoDelete.Click();
  Check3.Click();
  EXPECT_EQ(CellsOf(SymbolListview),
            (std::vector<Cells>{kA, kB, kC, {u"Neu", u"Jazz", u"http://neu", u"1", u"", u""}}));
}

TEST_F(DeletedEntriesTest, SecondRowOfANameComesBackBesideTheFirst) {
  Delete(SymbolListview, u"A");
  UndoDelete.Click();
  const RowId second = AddRow(SymbolListview, u"A", u"", u"http://zweite");
  SymbolListview.Select(second);
  Command8[3].Click();
  ASSERT_FALSE(profile.HasSection(kStationFile, u"A")) << "the first one's section";
  UndoDelete.Click();
  EXPECT_TRUE(FileIsWhole());
  store.LoadStations(u"");
  EXPECT_EQ(CellsOf(SymbolListview),
            (std::vector<Cells>{kA, {u"A", u"", u"http://zweite", u"", u"", u""}, kB, kC}));
}

TEST_F(DeletedEntriesTest, SecondRowOfANameComesBackThoughTheFirstWasSavedAgain) {
  SymbolListview.Select(AddRow(SymbolListview, u"A", u"", u"http://zweite"));
  Command8[3].Click();
  CommandButton1.Click();
  notices.notices.clear();
  UndoDelete.Click();
  ExpectNotice(app::sentences::kBroughtBack, u"A");
  EXPECT_EQ(profile.Get(kStationFile, u"A", u"Link"), u"http://a");
  store.LoadStations(u"");
  EXPECT_EQ(SymbolListview.Count(), 4U);
}

TEST_F(DeletedEntriesTest, RestoredSectionBelongsToTheEntryAndNoLongerToAnotherRow) {
  // Both rows were saved into one section; without it the other one is a row of its own.
  SymbolListview.Select(AddRow(SymbolListview, u"A", u"", u"http://zweite"));
  CommandButton1.Click();
  Command8[3].Click();
  ASSERT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"C"}));
  ASSERT_TRUE(unsaved.Contains(SymbolListview.RowAt(0)));
  UndoDelete.Click();
  store.LoadStations(u"");
  EXPECT_EQ(CellsOf(SymbolListview),
            (std::vector<Cells>{{u"A", u"", u"http://zweite", u"", u"", u""}, kA, kB, kC}));
}

TEST_F(DeletedEntriesTest, OfTwoEqualSectionsTheFirstComesBackInFront) {
  profile.files[kStationFile] = {{u"A", {{u"Link", u"http://1"}}}, {u"A", {{u"Link", u"http://2"}}}};
  whole_file = profile.files[kStationFile];
  store.LoadStations(u"");
  Delete(SymbolListview, u"A");
  UndoDelete.Click();
  EXPECT_TRUE(FileIsWhole());
  store.LoadStations(u"");
  EXPECT_EQ(SymbolListview.Count(), 2U);
}

TEST_F(DeletedEntriesTest, NothingHappensWhenAnotherStationHasTheNameMeanwhile) {
  Delete(SymbolListview, u"B");
  profile.Set(kStationFile, u"b", u"Link", u"http://anderer");
  UndoDelete.Click();
  ExpectNotice(app::sentences::kNameTaken, u"B");
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"C"}));
  EXPECT_EQ(profile.Get(kStationFile, u"B", u"Link"), u"http://anderer");
  profile.files[kStationFile].pop_back();
  UndoDelete.Click();
  EXPECT_TRUE(FileIsWhole()) << "the entry was kept";
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kB, kC}));
}

TEST_F(DeletedEntriesTest, NothingHappensWhenTheFileCannotBeWritten) {
  Delete(SymbolListview, u"B");
  profile.fail_writes = true;
  UndoDelete.Click();
  ExpectNotice(app::sentences::kNotWritten, u"C:\\Cfg\\Funkhaus.ini");
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"C"}));
  profile.fail_writes = false;
  UndoDelete.Click();
  EXPECT_TRUE(FileIsWhole());
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kB, kC}));
}

TEST_F(DeletedEntriesTest, UnsavedRowComesBackThoughItsDeletionCouldNotReachTheFile) {
  AddRow(SymbolListview, u"B", u"", u"http://zweite");
  profile.fail_writes = true;
  SymbolListview.Select(SymbolListview.RowAt(3));
  Command8[3].Click();
  ASSERT_EQ(SymbolListview.Count(), 3U);
  UndoDelete.Click();
  EXPECT_EQ(SymbolListview.Count(), 4U);
  EXPECT_EQ(unsaved.All().size(), 1U);
  EXPECT_TRUE(FileIsWhole());
}

TEST_F(DeletedEntriesTest, EntryThatAFilterViewDeletedBringsNoOtherUnsavedRowBack) {
  AddRow(SymbolListview, u"Neu", u"Rock", u"http://neu");
  Check3.Click();
  Delete(ExplorerListFilter, u"A");
  Check3.Click();
  Delete(SymbolListview, u"Neu");
  UndoDelete.Click();
  ASSERT_EQ(Names(SymbolListview), (std::vector<Text>{u"B", u"C", u"Neu"}));
  UndoDelete.Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"C", u"Neu"}));
}

TEST_F(DeletedEntriesTest, ImportedRowOfAFilterViewComesBackThere) {
  Check3.Click();
  AddRow(ExplorerListFilter, u"Import", u"", u"http://import");
  Delete(ExplorerListFilter, u"Import");
  UndoDelete.Click();
  EXPECT_EQ(Names(ExplorerListFilter), (std::vector<Text>{u"A", u"B", u"Import"}));
  EXPECT_EQ(SymbolListview.Count(), 3U);
  EXPECT_TRUE(FileIsWhole());
}

TEST_F(DeletedEntriesTest, ImportedRowOfAFilterViewThatIsGoneIsPassedOver) {
  Delete(SymbolListview, u"A");
  Check3.Click();
  AddRow(ExplorerListFilter, u"Import", u"", u"http://import");
  Delete(ExplorerListFilter, u"Import");
  Check3.Click();
  UndoDelete.Click();
  EXPECT_EQ(CellsOf(SymbolListview), (std::vector<Cells>{kA, kB, kC}));
  EXPECT_FALSE(UndoDelete.Enabled());
}

}  // namespace
}  // namespace catalogue
