#include "catalogue/station_editor.h"

#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using controls::CheckValue;
using controls::RowId;
using platform::MessageBoxAnswer;
using Box = test_support::FakeDialogs::Box;
using Write = test_support::MemoryProfile::Write;

constexpr char16_t kMarkFirst[] = u"Bitte Eintrag markieren oder neu erstellen!";
constexpr char16_t kRemoveFilterFirst[] = u"Bitte zuerst den Filter entfernen!";
constexpr char16_t kSaveChanges[] = u"Sollen die Änderungen gespeichert werden?";

class StationEditorTest : public CatalogueTest {
 protected:
  StationEditorTest() {
    AddStation(u"A", u"Rock", u"http://a", u"1", u"2");
    AddStation(u"B", u"Dance", u"http://b");
    store.LoadStations(u"");
    profile.writes.clear();
  }

  RowId SelectStation(const Text& name) {
    const RowId row = RowNamed(SymbolListview, name);
    SymbolListview.Select(row);
    return row;
  }

  void Fill(const Text& name, const Text& link, const Text& genre, CheckValue favourite, const Text& number) {
    TextBox1[0].SetText(name);
    TextBox1[1].SetText(link);
    Combo1.SetText(genre);
    state.filling_fields = true;
    Check2.SetValue(favourite);
    state.filling_fields = false;
    UpDownTextBox1.SetText(number);
  }

  static Write Set(const Text& section, const Text& key, const Text& value) {
    return {section, key, value, kStationFile};
  }
  static Write Delete(const Text& section) { return {section, std::nullopt, std::nullopt, kStationFile}; }
};

TEST_F(StationEditorTest, SingleFieldButtonsWithoutASelectionOnlySaySo) {
  for (const std::size_t index : {0U, 2U, 4U}) Command8[index].Click();
  EXPECT_EQ(dialogs.boxes, std::vector<Box>(3, Box{kMarkFirst, u"", 48}));
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(StationEditorTest, SingleFieldButtonsTakeTheFieldIntoTheRowAndTheFileAtOnce) {
  const RowId row = SelectStation(u"B");
  Fill(u"B", u"http://neu", u"Klassik", CheckValue::kUnchecked, u"7");
  Command8[0].Click();
  Command8[2].Click();
  Command8[4].Click();
  EXPECT_EQ(SymbolListview.Cell(row, app::kM3uNumberCell), u"7");
  EXPECT_EQ(SymbolListview.Cell(row, app::kLinkCell), u"http://neu");
  EXPECT_EQ(SymbolListview.Cell(row, app::kGenreCell), u"Klassik");
  EXPECT_EQ(profile.writes, (std::vector<Write>{Set(u"B", u"M3uNr", u"7"), Set(u"B", u"Link", u"http://neu"),
                                                Set(u"B", u"Genre", u"Klassik")}));
  EXPECT_FALSE(settings.CatalogueChanged);
}

TEST_F(StationEditorTest, EditedLinkOrNumberMakesTheDetailsStale) {
  SelectStation(u"B");
  Fill(u"B", u"http://neu", u"Dance", CheckValue::kUnchecked, u"7");
  for (const std::size_t index : {0U, 2U}) {
    state.details_are_stale = false;
    Command8[index].Click();
    EXPECT_TRUE(state.details_are_stale);
  }
}

TEST_F(StationEditorTest, ApplyingTheGenreOrWhatIsThereAlreadyLeavesTheDetailsKnown) {
  SelectStation(u"A");
  Fill(u"A", u"http://a", u"Klassik", CheckValue::kUnchecked, u"2");
  for (const std::size_t index : {4U, 0U, 1U, 2U}) {
    state.details_are_stale = false;
    Command8[index].Click();
    EXPECT_FALSE(state.details_are_stale) << index;
  }
}

TEST_F(StationEditorTest, ApplyingAnotherNameOrLinkWithAllFieldsMakesTheDetailsStale) {
  SelectStation(u"A");
  for (const auto& [name, link] :
       {std::pair(u"Anders", u"http://a"), std::pair(u"Anders", u"http://anders")}) {
    Fill(name, link, u"Rock", CheckValue::kUnchecked, u"2");
    state.details_are_stale = false;
    Command8[1].Click();
    EXPECT_TRUE(state.details_are_stale);
  }
}

TEST_F(StationEditorTest, ButtonsActOnTheFilteredListWhileItIsShown) {
  Check3.Click();
  const RowId row = RowNamed(ExplorerListFilter, u"A");
  ExplorerListFilter.Select(row);
  TextBox1[1].SetText(u"http://neu");
  Command8[2].Click();
  EXPECT_EQ(ExplorerListFilter.Cell(row, app::kLinkCell), u"http://neu");
  EXPECT_EQ(SymbolListview.Cell(RowNamed(SymbolListview, u"A"), app::kLinkCell), u"http://a");
  EXPECT_EQ(profile.Get(kStationFile, u"A", u"Link"), u"http://neu");
}

TEST_F(StationEditorTest, SelectionOfTheFilteredListDoesNotCountWhileThatIsHidden) {
  Check3.Click();
  ExplorerListFilter.Select(RowNamed(ExplorerListFilter, u"A"));
  Check3.Click();
  SymbolListview.Select(RowId::kNone);
  ASSERT_NE(ExplorerListFilter.SelectedRow(), RowId::kNone);
  profile.writes.clear();
  for (const std::size_t index : {0U, 2U, 3U, 4U}) Command8[index].Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>(3, {kMarkFirst, u"", 48})));
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_EQ(SymbolListview.Count(), 2U);
  EXPECT_EQ(ExplorerListFilter.Count(), 1U);
}

TEST_F(StationEditorTest, DeleteWithoutASelectionDoesNothingAndShowsNothing) {
  Command8[3].Click();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(StationEditorTest, DeleteRemovesRowAndSectionWithoutAQuestion) {
  SelectStation(u"A");
  Command8[3].Click();
  EXPECT_EQ(Names(SymbolListview), std::vector<Text>{u"B"});
  EXPECT_EQ(profile.writes, std::vector<Write>{Delete(u"A")});
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_FALSE(settings.CatalogueChanged);
}

TEST_F(StationEditorTest, DeleteInTheFilteredListLeavesTheFullListUntilItIsLoadedAgain) {
  Check3.Click();
  ExplorerListFilter.Select(RowNamed(ExplorerListFilter, u"A"));
  Command8[3].Click();
  EXPECT_EQ(ExplorerListFilter.Count(), 0U);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B"}));
  EXPECT_FALSE(profile.HasSection(kStationFile, u"A"));
  Check3.Click();
  EXPECT_EQ(Names(SymbolListview), std::vector<Text>{u"B"});
}

TEST_F(StationEditorTest, ApplyAllWithoutSelectionAndNameDoesNothing) {
  Fill(u"", u"http://x", u"Rock", CheckValue::kUnchecked, u"");
  Command8[1].Click();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(SymbolListview.Count(), 2U);
}

TEST_F(StationEditorTest, NewEntryIsAskedForAndCancelEndsIt) {
  Fill(u"Neu", u"http://neu", u"Rock", CheckValue::kChecked, u"");
  dialogs.answers = {MessageBoxAnswer::kCancel};
  Command8[1].Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Soll ein neuer Eintrag hinzugefügt werden?", u"", 33}}));
  EXPECT_EQ(SymbolListview.Count(), 2U);
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(StationEditorTest, NewEntryWritesAllKeysInTheirOrderTheNumberEvenWhenEmpty) {
  Fill(u"Neu", u"http://neu", u"Klassik", CheckValue::kChecked, u"");
  Command8[1].Click();
  EXPECT_EQ(profile.writes,
            (std::vector<Write>{Set(u"Neu", u"Station", u"Neu"), Set(u"Neu", u"Link", u"http://neu"),
                                Set(u"Neu", u"Genre", u"Klassik"), Set(u"Neu", u"Favorit", u"1"),
                                Set(u"Neu", u"M3uNr", u"")}));
  const RowId row = RowNamed(SymbolListview, u"Neu");
  EXPECT_EQ(SymbolListview.IndexOf(row), 2U);
  EXPECT_EQ(SymbolListview.Cell(row, app::kGenreCell), u"Klassik");
  EXPECT_EQ(SymbolListview.Cell(row, app::kLinkCell), u"http://neu");
  EXPECT_EQ(SymbolListview.Cell(row, app::kFavouriteCell), u"1");
}

TEST_F(StationEditorTest, NewEntrysNumberGoesToTheFileOnly) {
  Fill(u"Neu", u"http://neu", u"Rock", CheckValue::kUnchecked, u"4");
  Command8[1].Click();
  EXPECT_EQ(SymbolListview.Cell(RowNamed(SymbolListview, u"Neu"), app::kM3uNumberCell), u"");
  EXPECT_EQ(profile.Get(kStationFile, u"Neu", u"M3uNr"), u"4");
  EXPECT_EQ(profile.Get(kStationFile, u"Neu", u"Favorit"), u"");
}

TEST_F(StationEditorTest, NewEntryGetsTheIconOfItsName) {
  files.listing = {{u"Neu.ico", false, false}};
  icons.LoadStationIcons(u"C:\\Prog\\RadioIco");
  Fill(u"Neu", u"", u"", CheckValue::kUnchecked, u"");
  Command8[1].Click();
  EXPECT_EQ(SymbolListview.Rows().back().icon, 0);
}

TEST_F(StationEditorTest, NewEntryInTheFilteredListStandsThereAndInTheFile) {
  Check3.Click();
  Fill(u"Neu", u"http://neu", u"Rock", CheckValue::kChecked, u"");
  Command8[1].Click();
  EXPECT_EQ(Names(ExplorerListFilter), (std::vector<Text>{u"A", u"Neu"}));
  EXPECT_EQ(SymbolListview.Count(), 2U);
  Check3.Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"Neu"}));
}

TEST_F(StationEditorTest, UpdateWithAChangedNameReplacesTheSectionAndKeepsTheRowsPosition) {
  const RowId row = SelectStation(u"A");
  Fill(u"Anders", u"http://anders", u"Klassik", CheckValue::kUnchecked, u"3");
  Command8[1].Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"Anders", u"B"}));
  EXPECT_EQ(SymbolListview.IndexOf(row), 0U);
  EXPECT_EQ(
      profile.writes,
      (std::vector<Write>{Delete(u"A"), Set(u"Anders", u"Station", u"Anders"),
                          Set(u"Anders", u"Link", u"http://anders"), Set(u"Anders", u"Genre", u"Klassik"),
                          Set(u"Anders", u"Favorit", u""), Set(u"Anders", u"M3uNr", u"3")}));
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StationEditorTest, UpdateTakesEveryFieldButTheNumberIntoTheRow) {
  const RowId row = SelectStation(u"A");
  Fill(u"Anders", u"http://anders", u"Klassik", CheckValue::kUnchecked, u"3");
  Command8[1].Click();
  const auto cells = [&] { return SymbolListview.Rows()[*SymbolListview.IndexOf(row)].cells; };
  EXPECT_EQ(cells(), (controls::ListCells{u"Anders", u"Klassik", u"http://anders", u"", u"", u"2"}));
  Fill(u"Anders", u"http://anders", u"Klassik", CheckValue::kChecked, u"3");
  Command8[1].Click();
  EXPECT_EQ(cells(), (controls::ListCells{u"Anders", u"Klassik", u"http://anders", u"1", u"", u"2"}));
}

TEST_F(StationEditorTest, UpdateLeavesTheNumbersKeyOutBelowOneAndNewEntryDoesNot) {
  for (const char16_t* number : {u"0", u"", u"abc", u"0,5"}) {
    SelectStation(u"A");
    Fill(u"A", u"http://a", u"Rock", CheckValue::kUnchecked, number);
    Command8[1].Click();
    EXPECT_EQ(profile.Get(kStationFile, u"A", u"M3uNr"), std::nullopt);
    EXPECT_EQ(SymbolListview.Cell(RowNamed(SymbolListview, u"A"), app::kM3uNumberCell), u"2")
        << "the column stays";
  }
  SymbolListview.Select(RowId::kNone);
  Fill(u"N", u"", u"", CheckValue::kUnchecked, u"0");
  Command8[1].Click();
  EXPECT_EQ(profile.Get(kStationFile, u"N", u"M3uNr"), u"0");
}

TEST_F(StationEditorTest, UpdateAndSaveWriteANumberOfAtLeastOne) {
  for (const char16_t* number : {u"1", u"1,0", u"1,5", u"12"}) {
    SelectStation(u"A");
    Fill(u"A", u"http://a", u"Rock", CheckValue::kUnchecked, number);
    Command8[1].Click();
    EXPECT_EQ(profile.Get(kStationFile, u"A", u"M3uNr"), number);
    SymbolListview.SetCell(RowNamed(SymbolListview, u"B"), app::kM3uNumberCell, number);
    CommandButton1.Click();
    EXPECT_EQ(profile.Get(kStationFile, u"B", u"M3uNr"), number);
  }
}

TEST_F(StationEditorTest, SaveWritesEveryRowInListOrderWithoutTheStationKey) {
  SymbolListview.ClickHeader(0);
  profile.writes.clear();
  settings.CatalogueChanged = true;
  CommandButton1.Click();
  EXPECT_EQ(profile.writes,
            (std::vector<Write>{Set(u"B", u"Genre", u"Dance"), Set(u"B", u"Link", u"http://b"),
                                Set(u"B", u"Favorit", u""), Set(u"B", u"M3uNr", u""),
                                Set(u"A", u"Genre", u"Rock"), Set(u"A", u"Link", u"http://a"),
                                Set(u"A", u"Favorit", u"1"), Set(u"A", u"M3uNr", u"2")}));
  EXPECT_FALSE(settings.CatalogueChanged);
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Änderungen gespeichert!", u"", 64}}));
}

TEST_F(StationEditorTest, SaveIsOnDiskBeforeItIsReported) {
  dialogs.on_box = [this] {
    EXPECT_EQ(profile.open_groups, 0);
    EXPECT_EQ(profile.ended_groups, 1);
  };
  CommandButton1.Click();
  EXPECT_EQ(dialogs.boxes.size(), 1U);
}

TEST_F(StationEditorTest, SavingANumberBelowOneWritesAnEmptyValue) {
  for (const char16_t* number : {u"0", u"0,99", u"-3", u"x"}) {
    SymbolListview.SetCell(RowNamed(SymbolListview, u"A"), app::kM3uNumberCell, number);
    CommandButton1.Click();
    EXPECT_EQ(profile.Get(kStationFile, u"A", u"M3uNr"), u"");
  }
}

TEST_F(StationEditorTest, SavingWritesTheFavouriteMarkAsItStands) {
  for (const char16_t* mark : {u"0", u"ja", u" 1", u"01", u"", u"1"}) {
    SymbolListview.SetCell(RowNamed(SymbolListview, u"A"), app::kFavouriteCell, mark);
    CommandButton1.Click();
    EXPECT_EQ(profile.Get(kStationFile, u"A", u"Favorit"), mark);
  }
}

TEST_F(StationEditorTest, SaveKeepsSectionsOfStationsThatAreNotInTheList) {
  SymbolListview.RemoveRow(RowNamed(SymbolListview, u"A"));
  CommandButton1.Click();
  EXPECT_TRUE(profile.HasSection(kStationFile, u"A"));
}

TEST_F(StationEditorTest, OfTwoRowsWithOneNameTheLaterOnesValuesWin) {
  AddRow(SymbolListview, u"B", u"Rock", u"http://später");
  CommandButton1.Click();
  EXPECT_EQ(profile.Get(kStationFile, u"B", u"Link"), u"http://später");
}

TEST_F(StationEditorTest, SaveRefusesInEitherFilterView) {
  for (controls::CheckBox* box : {&Check1, &Check3}) {
    dialogs.boxes.clear();
    box->SetValue(CheckValue::kChecked);
    settings.CatalogueChanged = true;
    editor.CommandButton1_Click();
    EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{kRemoveFilterFirst, u"", 48}}));
    EXPECT_TRUE(profile.writes.empty());
    EXPECT_TRUE(settings.CatalogueChanged);
  }
}

TEST_F(StationEditorTest, NewStationWithoutAnAcceptedDialogAsksNothing) {
  CommandButton2.Click();
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StationEditorTest, CancelledDialogAsksAboutAnEarlierUnsavedStationAgain) {
  settings.CatalogueChanged = true;
  dialogs.answers = {MessageBoxAnswer::kNo};
  CommandButton2.Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{kSaveChanges, u"", 36}}));
  EXPECT_TRUE(settings.CatalogueChanged);
}

TEST_F(StationEditorTest, NewStationOffersToSaveAndYesSaves) {
  new_station_dialog = [this] {
    AddRow(SymbolListview, u"Neu");
    settings.CatalogueChanged = true;
  };
  dialogs.answers = {MessageBoxAnswer::kYes};
  CommandButton2.Click();
  EXPECT_EQ(dialogs.boxes,
            (std::vector<Box>{{kSaveChanges, u"", 36}, {u"Änderungen gespeichert!", u"", 64}}));
  EXPECT_TRUE(profile.HasSection(kStationFile, u"Neu"));
  EXPECT_FALSE(settings.CatalogueChanged);
}

TEST_F(StationEditorTest, NoAfterTheDialogWritesNothingAndTheChangeStays) {
  new_station_dialog = [this] { settings.CatalogueChanged = true; };
  dialogs.answers = {MessageBoxAnswer::kNo};
  CommandButton2.Click();
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_TRUE(settings.CatalogueChanged);
}

TEST_F(StationEditorTest, YesInAFilterViewWritesNothingAndStillCountsAsSaved) {
  Check3.Click();
  new_station_dialog = [this] { settings.CatalogueChanged = true; };
  dialogs.answers = {MessageBoxAnswer::kYes};
  CommandButton2.Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{kSaveChanges, u"", 36}, {kRemoveFilterFirst, u"", 48}}));
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_FALSE(settings.CatalogueChanged);
}

TEST_F(StationEditorTest, YesAfterTheDialogClearsTheFlagBeforeItSaves) {
  Check3.Click();
  new_station_dialog = [this] { settings.CatalogueChanged = true; };
  dialogs.answers = {MessageBoxAnswer::kYes};
  std::vector<bool> flags;
  dialogs.on_box = [&] { flags.push_back(settings.CatalogueChanged); };
  CommandButton2.Click();
  EXPECT_EQ(flags, (std::vector<bool>{true, false})) << "at the question, and at the refusal to save";
}

TEST_F(StationEditorTest, RecordButtonLaunchesTheTool) {
  Command8[5].Click();
  EXPECT_EQ(recorder_launches, 1);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StationEditorTest, AnyOtherIndexDoesNothing) {
  SelectStation(u"A");
  editor.Command8_Click(6);
  editor.Command8_Click(99);
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(StationEditorTest, FailedWritesShowNoMessageBox) {
  profile.fail_writes = true;
  const RowId row = SelectStation(u"A");
  Fill(u"A", u"http://neu", u"Klassik", CheckValue::kUnchecked, u"");
  Command8[2].Click();
  EXPECT_EQ(SymbolListview.Cell(row, app::kLinkCell), u"http://neu") << "the step after the failed one runs";
  Command8[1].Click();
  EXPECT_EQ(SymbolListview.Cell(row, app::kGenreCell), u"Klassik");
  Command8[3].Click();
  EXPECT_FALSE(SymbolListview.Contains(row));
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StationEditorTest, EntryThatCouldNotBeWrittenStaysInTheListWhenTheViewsAreSwitched) {
  profile.fail_writes = true;
  Fill(u"Neu", u"http://neu", u"Rock", CheckValue::kUnchecked, u"");
  Command8[1].Click();
  Check3.Click();
  Check3.Click();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"Neu"}));
}

}  // namespace
}  // namespace catalogue
