// What becomes of rows, of the flag of unsaved changes and of the user's knowledge when the station file
// cannot be written. What is written when it can be is in the tests of the buttons.

#include "catalogue/station_writer.h"

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

class FailedWriteTest : public CatalogueTest {
 protected:
  FailedWriteTest() {
    AddStation(u"A", u"Rock", u"http://a", u"1", u"2");
    AddStation(u"B", u"Dance", u"http://b", u"1");
    store.LoadStations(u"");
    profile.fail_writes = true;
  }

  void Select(ListView& list, const Text& name) {
    list.Select(name.empty() ? RowId::kNone : RowNamed(list, name));
  }
  void Fill(const Text& name, const Text& link, const Text& genre, const Text& number) {
    TextBox1[0].SetText(name);
    TextBox1[1].SetText(link);
    Combo1.SetText(genre);
    state.filling_fields = true;
    Check2.SetValue(CheckValue::kChecked);
    state.filling_fields = false;
    UpDownTextBox1.SetText(number);
  }
  std::vector<Cells> List() {
    std::vector<Cells> all;
    for (const ListRow& row : SymbolListview.Rows()) all.push_back(row.cells);
    return all;
  }
  /// What a save writes once the file can be written again; the list is reloaded before and after it.
  std::vector<Cells> Saved() {
    store.LoadStations(u"");
    profile.fail_writes = false;
    CommandButton1.Click();
    store.LoadStations(u"");
    EXPECT_TRUE(unsaved.All().empty());
    return List();
  }
  void ExpectNotice(platform::TextView sentence = app::sentences::kNotWritten) {
    EXPECT_EQ(notices.notices, (std::vector<Notice>{{Text(sentence), {u"C:\\Cfg\\Funkhaus.ini"}}}));
  }

  const Cells kA{u"A", u"Rock", u"http://a", u"1", u"", u"2"};
  const Cells kB{u"B", u"Dance", u"http://b", u"1", u"", u""};
};

TEST_F(FailedWriteTest, SaveIsReportedAsDescribedButTheNoticeIsTrueAndTheChangeStays) {
  AddRow(SymbolListview, u"Neu", u"Rock", u"http://neu");
  CommandButton1.Click();
  ASSERT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_EQ(dialogs.boxes[0].text, u"Änderungen gespeichert!");
  ExpectNotice();
  EXPECT_TRUE(settings.CatalogueChanged);
  EXPECT_EQ(unsaved.All().size(), 1U);
  EXPECT_EQ(Saved(), (std::vector<Cells>{kA, kB, {u"Neu", u"Rock", u"http://neu", u"", u"", u""}}));
  EXPECT_FALSE(settings.CatalogueChanged);
  EXPECT_EQ(notices.notices.size(), 1U) << "a save that succeeds says nothing more";
}

TEST_F(FailedWriteTest, YesAfterTheDialogLeavesTheChangeUnsaved) {
  new_station_dialog = [this] {
    AddRow(SymbolListview, u"Neu");
    settings.CatalogueChanged = true;
  };
  dialogs.answers = {platform::MessageBoxAnswer::kYes};
  CommandButton2.Click();
  EXPECT_TRUE(settings.CatalogueChanged);
  ExpectNotice();
}

TEST_F(FailedWriteTest, EditedCellIsNewerThanTheFileUntilASave) {
  for (const bool in_view : {false, true}) {
    settings.CatalogueChanged = false;
    notices.notices.clear();
    profile.fail_writes = true;
    if (in_view) Check3.Click();
    ListView& list = lists.Active();
    Select(list, u"A");
    TextBox1[1].SetText(in_view ? u"http://zwei" : u"http://eins");
    Command8[2].Click();
    EXPECT_EQ(list.Cell(RowNamed(list, u"A"), app::kLinkCell), TextBox1[1].GetText());
    ExpectNotice();
    EXPECT_TRUE(settings.CatalogueChanged);
    if (in_view) Check3.Click();
    profile.fail_writes = false;
    profile.Set(kStationFile, u"A", u"Genre", u"Jazz");
    EXPECT_EQ(Saved(), (std::vector<Cells>{{u"A", u"Jazz", TextBox1[1].GetText(), u"1", u"", u"2"}, kB}));
  }
}

TEST_F(FailedWriteTest, CellThatWasWrittenBeforeIsNotTakenBackEither) {
  profile.fail_writes = false;
  SymbolListview.Select(AddRow(SymbolListview, u"Neu", u"Rock", u"http://neu"));
  TextBox1[1].SetText(u"http://geschrieben");
  Command8[2].Click();
  profile.fail_writes = true;
  TextBox1[1].SetText(u"http://nicht geschrieben");
  Command8[2].Click();
  EXPECT_EQ(Saved(),
            (std::vector<Cells>{kA, kB, {u"Neu", u"Rock", u"http://nicht geschrieben", u"", u"", u""}}));
}

TEST_F(FailedWriteTest, FavouriteMarkStaysInTheRowUntilASave) {
  Check3.Click();
  Select(ExplorerListFilter, u"B");
  state.filling_fields = true;
  Check2.SetValue(CheckValue::kChecked);
  state.filling_fields = false;
  Check2.Click();
  ExpectNotice();
  Check3.Click();
  EXPECT_EQ(Saved()[1], (Cells{u"B", u"Dance", u"http://b", u"", u"", u""}));
}

TEST_F(FailedWriteTest, NewEntryIsAnUnsavedRowWithItsNumber) {
  for (const bool in_view : {false, true}) {
    profile.fail_writes = true;
    if (in_view) Check3.Click();
    Select(lists.Active(), u"");
    Fill(in_view ? u"D" : u"C", u"http://neu", u"Rock", u"4");
    notices.notices.clear();
    Command8[1].Click();
    ExpectNotice();
    EXPECT_TRUE(settings.CatalogueChanged);
    if (in_view) Check3.Click();
    EXPECT_EQ(Saved().back(), (Cells{in_view ? u"D" : u"C", u"Rock", u"http://neu", u"1", u"", u"4"}));
  }
}

TEST_F(FailedWriteTest, UpdateOfAStationStaysOneRow) {
  for (const bool in_view : {false, true}) {
    profile.fail_writes = true;
    if (in_view) Check3.Click();
    Select(lists.Active(), u"A");
    Fill(u"A", in_view ? u"http://zwei" : u"http://eins", u"Jazz", in_view ? u"0" : u"3");
    notices.notices.clear();
    Command8[1].Click();
    ExpectNotice();
    EXPECT_TRUE(settings.CatalogueChanged);
    if (in_view) Check3.Click();
    EXPECT_EQ(Saved(), (std::vector<Cells>{
                           {u"A", u"Jazz", TextBox1[1].GetText(), u"1", u"", in_view ? u"" : u"3"}, kB}));
  }
}

TEST_F(FailedWriteTest, RenamedStationStaysOneRowAndItsOldNameGoesWithTheSave) {
  for (const bool in_view : {false, true}) {
    const Text old_name = in_view ? u"Zwei" : u"A";
    const Text name = in_view ? u"Drei" : u"Zwei";
    profile.fail_writes = true;
    if (in_view) Check3.Click();
    Select(lists.Active(), old_name);
    Fill(name, u"http://z", u"Jazz", u"3");
    Command8[1].Click();
    EXPECT_TRUE(profile.HasSection(kStationFile, old_name));
    if (in_view) Check3.Click();
    store.LoadStations(u"");
    EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"B", name}));
    EXPECT_EQ(Saved(), (std::vector<Cells>{kB, {name, u"Jazz", u"http://z", u"1", u"", u"3"}}));
    EXPECT_FALSE(profile.HasSection(kStationFile, old_name));
  }
}

TEST_F(FailedWriteTest, OldNameOfARenamedStationGoesWithTheNextApplyAndWithItsDeletionToo) {
  for (const std::size_t button : {1U, 3U}) {
    profile.fail_writes = true;
    Select(SymbolListview, u"A");
    Fill(u"Zwei", u"http://z", u"Jazz", u"3");
    Command8[1].Click();
    profile.fail_writes = false;
    Command8[button].Click();
    EXPECT_FALSE(profile.HasSection(kStationFile, u"A"));
    EXPECT_EQ(profile.HasSection(kStationFile, u"Zwei"), button == 1U);
    AddStation(u"A");
    store.LoadStations(u"");
  }
}

TEST_F(FailedWriteTest, RowRenamedInVainGoesWhenAFilterViewDeletesItsOldName) {
  Select(SymbolListview, u"A");
  Fill(u"Zwei", u"http://z", u"Jazz", u"3");
  Command8[1].Click();
  profile.fail_writes = false;
  Check3.Click();
  Select(ExplorerListFilter, u"A");
  Command8[3].Click();
  Check3.Click();
  EXPECT_EQ(List(), std::vector<Cells>{kB});
}

TEST_F(FailedWriteTest, EditInAFilterViewReachesTheFullListThoughThatWasEmptied) {
  SymbolListview.Clear();
  Check3.Click();
  Select(ExplorerListFilter, u"A");
  TextBox1[1].SetText(u"http://anders");
  Command8[2].Click();
  Select(ExplorerListFilter, u"B");
  Fill(u"Neuer Name", u"http://b", u"Jazz", u"");
  Command8[1].Click();
  Check3.Click();
  EXPECT_EQ(Saved(), (std::vector<Cells>{{u"A", u"Rock", u"http://anders", u"1", u"", u"2"},
                                         {u"Neuer Name", u"Jazz", u"http://b", u"1", u"", u""}}));
}

TEST_F(FailedWriteTest, RowThatAFilterViewCarriesIntoTheEmptiedListHasItsOtherCellsFromTheFile) {
  profile.fail_writes = false;
  Check3.Click();
  Select(ExplorerListFilter, u"A");
  Fill(u"A", u"http://a", u"Rock", u"7");
  Command8[1].Click();
  SymbolListview.Clear();
  profile.fail_writes = true;
  TextBox1[1].SetText(u"http://anders");
  Command8[2].Click();
  EXPECT_EQ(List(), (std::vector<Cells>{{u"A", u"Rock", u"http://anders", u"1", u"", u"7"}}));
}

TEST_F(FailedWriteTest, EditOfARowThatIsInTheFilterViewOnlyStaysThere) {
  Check3.Click();
  ExplorerListFilter.Select(AddRow(ExplorerListFilter, u"Import", u"", u"http://import"));
  Command8[4].Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B"}));
  EXPECT_FALSE(unsaved.Contains(RowId::kNone));
}

TEST_F(FailedWriteTest, WholeRowThatIsInTheFilterViewOnlyIsAddedToTheFullList) {
  Check3.Click();
  ExplorerListFilter.Select(AddRow(ExplorerListFilter, u"Import", u"", u"http://import"));
  Fill(u"Import", u"http://import", u"Jazz", u"");
  Command8[1].Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"Import"}));
  EXPECT_FALSE(unsaved.Contains(RowId::kNone));
}

TEST_F(FailedWriteTest, NumberThatNoFileHasIsShownInTheRowOfTheFilterView) {
  Check3.Click();
  Select(ExplorerListFilter, u"A");
  Fill(u"A", u"http://a", u"Rock", u"7");
  Command8[1].Click();
  EXPECT_EQ(ExplorerListFilter.Cell(RowNamed(ExplorerListFilter, u"A"), app::kM3uNumberCell), u"7");
}

TEST_F(FailedWriteTest, StationThatCouldNotBeDeletedComesBackWithTheNextLoading) {
  for (const bool in_view : {false, true}) {
    if (in_view) Check3.Click();
    Select(lists.Active(), u"A");
    notices.notices.clear();
    Command8[3].Click();
    EXPECT_EQ(Names(lists.Active()), std::vector<Text>{u"B"});
    ExpectNotice(app::sentences::kNotDeleted);
    EXPECT_FALSE(UndoDelete.Enabled()) << "it comes back by itself";
    EXPECT_FALSE(settings.CatalogueChanged) << "the file holds all that the user entered";
    if (in_view) Check3.Click();
    store.LoadStations(u"");
    EXPECT_EQ(List(), (std::vector<Cells>{kA, kB}));
  }
}

TEST_F(FailedWriteTest, HalfWrittenRowThatCouldNotBeDeletedComesBackWhole) {
  profile.fail_writes = false;
  SymbolListview.Select(AddRow(SymbolListview, u"Neu", u"Rock", u"http://neu"));
  Combo1.SetText(u"Jazz");
  Command8[4].Click();
  profile.fail_writes = true;
  Command8[3].Click();
  EXPECT_EQ(SymbolListview.Count(), 2U);
  store.LoadStations(u"");
  EXPECT_EQ(List(), (std::vector<Cells>{kA, kB, {u"Neu", u"Jazz", u"http://neu", u"", u"", u""}}));
}

TEST_F(FailedWriteTest, DeletingASecondRowOfASavedStationsNameIsAnUnsavedChangeOfTheFirst) {
  profile.fail_writes = false;
  SymbolListview.Select(AddRow(SymbolListview, u"A"));
  Command8[3].Click();
  EXPECT_TRUE(settings.CatalogueChanged);
  EXPECT_EQ(Saved(), (std::vector<Cells>{kA, kB}));
}

}  // namespace
}  // namespace catalogue
