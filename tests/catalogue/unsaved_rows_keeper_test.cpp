#include "catalogue/unsaved_rows_keeper.h"

#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using controls::RowId;

class UnsavedRowsKeeperTest : public CatalogueTest {
 protected:
  UnsavedRowsKeeperTest() {
    AddStation(u"A", u"Rock", u"http://a");
    AddStation(u"B", u"Dance", u"http://b", u"1");
  }

  /// A start of the program, as far as the catalogue has a part in it.
  UnsavedRowsKeeper::Restored Begin() {
    const auto restored = keeper.Restore();
    store.LoadStations(u"");
    return restored;
  }
  /// What is kept now, read as the next start reads it; no rows when there is no file.
  UnsavedCatalogue Kept() {
    const auto file = files.files.find(kFile);
    if (file == files.files.end()) return {};
    return ParseUnsavedRows(file->second, conversion).value();
  }
  std::vector<Text> KeptNames() {
    std::vector<Text> names;
    for (const UnsavedRow& row : Kept().rows) names.push_back(row.row.cells[app::kNameCell]);
    return names;
  }
  void Leave(const UnsavedCatalogue& catalogue) {
    files.files[kFile] = FormatUnsavedRows(catalogue, conversion);
  }
  static UnsavedRow Row(const Text& name, PartInFile part = {}, int icon = -1) {
    UnsavedRow unsaved;
    unsaved.row.cells.Set(app::kNameCell, name);
    unsaved.row.icon = icon;
    unsaved.part = std::move(part);
    return unsaved;
  }
  /// The time that a change may wait passes.
  void Wait() { timer.Fire(); }

  const Text kFile = environment.state_file + u".unsaved";
  controls::Timer timer;
  UnsavedRowsKeeper keeper{
      {files, environment, conversion}, station_file, unsaved, SymbolListview, icons, settings, timer};
};

TEST_F(UnsavedRowsKeeperTest, WithoutAFileNothingIsPutBackAndNothingWritten) {
  const auto restored = Begin();
  EXPECT_EQ(restored.rows, 0U);
  EXPECT_FALSE(restored.unreadable);
  Wait();
  EXPECT_FALSE(settings.CatalogueChanged);
  EXPECT_EQ(files.writes, 0);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B"}));
}

TEST_F(UnsavedRowsKeeperTest, RowThatWasAddedIsInTheFileAfterTheDelay) {
  Begin();
  Wait();
  AddRow(SymbolListview, u"Neu", u"Jazz", u"http://neu");
  settings.CatalogueChanged = true;
  ASSERT_TRUE(timer.Enabled());
  EXPECT_EQ(timer.Interval(), UnsavedRowsKeeper::kDelay);
  EXPECT_LE(UnsavedRowsKeeper::kDelay, 1000);
  EXPECT_TRUE(timer.TicksWhilePainting());
  EXPECT_EQ(files.writes, 0);
  Wait();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
  EXPECT_TRUE(Kept().catalogue_changed);
  EXPECT_EQ(Kept().rows[0].row.cells[app::kLinkCell], u"http://neu");
}

TEST_F(UnsavedRowsKeeperTest, TimerRestsWhenNothingChanged) {
  Begin();
  Wait();
  EXPECT_FALSE(timer.Enabled());
  AddRow(SymbolListview, u"Neu");
  Wait();
  EXPECT_FALSE(timer.Enabled());
  SymbolListview.SetCell(RowNamed(SymbolListview, u"A"), app::kTitleCell, u"Titel");
  EXPECT_FALSE(timer.Enabled()) << "a saved row's cell";
}

TEST_F(UnsavedRowsKeeperTest, LaterChangesDoNotPutTheWritingOff) {
  Begin();
  AddRow(SymbolListview, u"Neu");
  ASSERT_TRUE(timer.Enabled());
  const auto restarted = timer.Changed.Subscribe([] { ADD_FAILURE() << "the timer restarts"; });
  AddRow(SymbolListview, u"Neuer");
}

TEST_F(UnsavedRowsKeeperTest, WriteThatFailedIsTriedAgainByItselfAndLessOften) {
  Begin();
  files.can_write = false;
  AddRow(SymbolListview, u"Neu");
  Wait();
  EXPECT_TRUE(timer.Enabled());
  EXPECT_EQ(timer.Interval(), UnsavedRowsKeeper::kRetryDelay);
  EXPECT_GT(UnsavedRowsKeeper::kRetryDelay, UnsavedRowsKeeper::kDelay);
  files.can_write = true;
  Wait();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
  EXPECT_FALSE(timer.Enabled());
  AddRow(SymbolListview, u"Neuer");
  EXPECT_EQ(timer.Interval(), UnsavedRowsKeeper::kDelay);
}

TEST_F(UnsavedRowsKeeperTest, FileThatSomebodyElseRemovedIsGone) {
  Begin();
  AddRow(SymbolListview, u"Neu");
  Wait();
  files.files.erase(kFile);
  SymbolListview.Clear();
  Wait();
  EXPECT_FALSE(timer.Enabled());
}

TEST_F(UnsavedRowsKeeperTest, FileThatWouldStayTheSameIsNotWrittenAgain) {
  Begin();
  const RowId row = AddRow(SymbolListview, u"Neu");
  Wait();
  ASSERT_EQ(files.writes, 1);
  SymbolListview.SetCell(row, app::kTitleCell, u"Titel");
  store.LoadStations(u"");
  Wait();
  EXPECT_EQ(files.writes, 1);
}

TEST_F(UnsavedRowsKeeperTest, EveryChangeOfUnsavedRowsReachesTheFile) {
  Begin();
  const RowId first = AddRow(SymbolListview, u"1");
  const RowId second = AddRow(SymbolListview, u"2");
  Wait();
  EXPECT_EQ(KeptNames(), (std::vector<Text>{u"1", u"2"}));
  SymbolListview.SetCell(second, app::kNameCell, u"0");
  Wait();
  EXPECT_EQ(KeptNames(), (std::vector<Text>{u"1", u"0"}));
  for (int click = 0; click < 2; ++click) SymbolListview.ClickHeader(0);
  Wait();
  EXPECT_EQ(KeptNames(), (std::vector<Text>{u"0", u"1"})) << "sorted, downwards and upwards";
  SymbolListview.RemoveRow(first);
  Wait();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"0"});
  SymbolListview.Clear();
  Wait();
  EXPECT_FALSE(files.files.contains(kFile));
}

TEST_F(UnsavedRowsKeeperTest, FlagThatChangesAloneReachesTheFileWhenItIsNoted) {
  Begin();
  AddRow(SymbolListview, u"Neu");
  settings.CatalogueChanged = true;
  Wait();
  settings.CatalogueChanged = false;
  keeper.Note();
  Wait();
  EXPECT_FALSE(Kept().catalogue_changed);
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
}

TEST_F(UnsavedRowsKeeperTest, SaveRemovesTheFileAtOnce) {
  Begin();
  AddRow(SymbolListview, u"Neu");
  Wait();
  dialogs.on_box = [this] { EXPECT_FALSE(files.files.contains(kFile)) << "before anything is reported"; };
  CommandButton1.Click();
  EXPECT_EQ(dialogs.boxes.size(), 1U);
}

TEST_F(UnsavedRowsKeeperTest, SaveThatFailedKeepsTheFile) {
  Begin();
  AddRow(SymbolListview, u"Neu");
  profile.fail_writes = true;
  CommandButton1.Click();
  Wait();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
}

TEST_F(UnsavedRowsKeeperTest, CellThatIsWrittenSinglyIsInTheFileAtOnce) {
  Begin();
  const RowId row = AddRow(SymbolListview, u"Neu");
  Wait();
  SymbolListview.Select(row);
  Check2.Click();
  EXPECT_EQ(Kept().rows[0].part.cells, std::set<app::StationCell>{app::kFavouriteCell});
  EXPECT_EQ(Kept().rows[0].part.sections, std::vector<Text>{u"Neu"});
}

TEST_F(UnsavedRowsKeeperTest, SavedRowThatCouldNotBeEditedIsKept) {
  Begin();
  Wait();
  SymbolListview.Select(RowNamed(SymbolListview, u"A"));
  TextBox1[1].SetText(u"http://anders");
  profile.fail_writes = true;
  Command8[2].Click();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"A"});
  EXPECT_EQ(Kept().rows[0].row.cells[app::kLinkCell], u"http://anders");
  EXPECT_TRUE(Kept().catalogue_changed);
}

TEST_F(UnsavedRowsKeeperTest, FlagThatFollowsTheDeletionOfASecondRowIsKept) {
  Begin();
  const RowId second = AddRow(SymbolListview, u"A");
  Wait();
  ASSERT_FALSE(Kept().catalogue_changed);
  SymbolListview.Select(second);
  Command8[3].Click();
  ASSERT_TRUE(settings.CatalogueChanged);
  Wait();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"A"}) << "the section was the first one's";
  EXPECT_TRUE(Kept().catalogue_changed);
}

TEST_F(UnsavedRowsKeeperTest, DeletedUnsavedRowThatIsBroughtBackIsKeptAgain) {
  Begin();
  const RowId row = AddRow(SymbolListview, u"Neu");
  SymbolListview.Select(row);
  Command8[3].Click();
  Wait();
  EXPECT_FALSE(files.files.contains(kFile));
  UndoDelete.Click();
  Wait();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
}

TEST_F(UnsavedRowsKeeperTest, NextStartPutsTheRowsBackAsUnsavedOnes) {
  Leave({true, {Row(u"Neu"), Row(u"Import")}});
  const auto restored = Begin();
  EXPECT_EQ(restored.rows, 2U);
  EXPECT_FALSE(restored.unreadable);
  EXPECT_TRUE(settings.CatalogueChanged);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"Import", u"Neu"}));
  for (const auto* name : {u"Neu", u"Import"}) EXPECT_TRUE(unsaved.Contains(RowNamed(SymbolListview, name)));
  EXPECT_FALSE(unsaved.Contains(RowNamed(SymbolListview, u"A")));
  EXPECT_TRUE(profile.writes.empty()) << "nothing reaches the station file";
}

TEST_F(UnsavedRowsKeeperTest, RowsThatWerePutBackStayKeptUntilTheUserDecides) {
  Leave({true, {Row(u"Neu")}});
  Begin();
  Wait();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
  keeper.Discard();
  EXPECT_FALSE(files.files.contains(kFile));
}

TEST_F(UnsavedRowsKeeperTest, FileThatWasReadIsKnownFromTheBeginning) {
  Leave({true, {Row(u"Neu")}});
  Begin();
  Wait();
  EXPECT_EQ(files.writes, 0) << "it says the same as before";

  Leave({true, {Row(u"Neu")}});
  UnsavedRowsKeeper next{
      {files, environment, conversion}, station_file, unsaved, SymbolListview, icons, settings, timer};
  next.Restore();
  next.Discard();
  EXPECT_FALSE(files.files.contains(kFile)) << "at once too";
}

TEST_F(UnsavedRowsKeeperTest, RowThatWasSavedJustBeforeAKillIsNotPutBack) {
  UnsavedRow saved = Row(u"B");
  saved.row.cells = {u"b", u"Dance", u"http://b", u"1", u"Titel", u""};
  Leave({true, {saved}});
  const auto restored = Begin();
  EXPECT_EQ(restored.rows, 0U);
  EXPECT_FALSE(settings.CatalogueChanged);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B"}));
  Wait();
  EXPECT_FALSE(files.files.contains(kFile));
}

TEST_F(UnsavedRowsKeeperTest, RowThatDiffersFromItsSectionInOneFieldIsPutBack) {
  for (const auto cell : {app::kLinkCell, app::kGenreCell, app::kFavouriteCell, app::kM3uNumberCell}) {
    UnsavedRow changed = Row(u"B");
    changed.row.cells = {u"B", u"Dance", u"http://b", u"1", u"", u""};
    changed.row.cells.Set(cell, u"7");
    Leave({true, {changed, Row(u"Fehlt")}});
    EXPECT_EQ(keeper.Restore().rows, 2U);
    EXPECT_TRUE(settings.CatalogueChanged);
  }
}

TEST_F(UnsavedRowsKeeperTest, RowWhoseEarlierSectionIsStillThereIsPutBack) {
  UnsavedRow renamed = Row(u"B", {{}, {u"A"}});
  renamed.row.cells = {u"B", u"Dance", u"http://b", u"1", u"", u""};
  Leave({true, {renamed}});
  EXPECT_EQ(keeper.Restore().rows, 1U);
}

TEST_F(UnsavedRowsKeeperTest, RowWhoseNameTheFileCannotListIsPutBack) {
  AddStation(u"");
  Leave({true, {Row(u"")}});
  EXPECT_EQ(keeper.Restore().rows, 1U);
}

TEST_F(UnsavedRowsKeeperTest, SectionThatExistsForARowsSakeIsNoSecondRow) {
  AddStation(u"Neu", u"", u"", u"1");
  Leave({false, {Row(u"Neu", {{app::kFavouriteCell}, {u"Neu"}})}});
  Begin();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"Neu"}));
  EXPECT_EQ(SymbolListview.Cell(RowNamed(SymbolListview, u"Neu"), app::kFavouriteCell), u"1");
}

TEST_F(UnsavedRowsKeeperTest, SectionThatAnotherProgramMadeMeanwhileStandsBesideTheRow) {
  AddStation(u"Neu", u"Jazz", u"http://fremd");
  Leave({true, {Row(u"Neu")}});
  Begin();
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B", u"Neu", u"Neu"}));
  EXPECT_EQ(profile.Get(kStationFile, u"Neu", u"Link"), u"http://fremd");
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(UnsavedRowsKeeperTest, RowGetsTheIconThatItHadAndNoOther) {
  files.listing = {{u"A.ico", false, false}, {u"Mit.ico", false, false}, {u"Ohne.ico", false, false}};
  icons.LoadStationIcons(u"C:\\RadioIco");
  Leave({true, {Row(u"Mit", {}, 5), Row(u"Ohne")}});
  Begin();
  EXPECT_EQ(SymbolListview.Rows()[*SymbolListview.IndexOf(RowNamed(SymbolListview, u"Mit"))].icon, 1);
  EXPECT_EQ(SymbolListview.Rows()[*SymbolListview.IndexOf(RowNamed(SymbolListview, u"Ohne"))].icon, -1);
}

TEST_F(UnsavedRowsKeeperTest, FileWithoutAMeaningIsSetAsideAndTheStartContinues) {
  files.files[kFile] = "something else";
  files.files[kFile + u".damaged"] = "an older one";
  const auto restored = Begin();
  EXPECT_EQ(restored.rows, 0U);
  EXPECT_TRUE(restored.unreadable);
  EXPECT_FALSE(settings.CatalogueChanged);
  EXPECT_EQ(Names(SymbolListview), (std::vector<Text>{u"A", u"B"}));
  EXPECT_FALSE(files.files.contains(kFile));
  EXPECT_EQ(files.files[kFile + u".damaged"], "something else");
  AddRow(SymbolListview, u"Neu");
  Wait();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
}

TEST_F(UnsavedRowsKeeperTest, FileBeyondTheLimitIsSetAside) {
  files.files[kFile] = std::string(kLongestUnsavedRowsFile + 1, 'a');
  EXPECT_TRUE(Begin().unreadable);
  EXPECT_TRUE(files.files.contains(kFile + u".damaged"));
}

TEST_F(UnsavedRowsKeeperTest, FileThatCannotBeWrittenIsTriedAgainWithTheNextChange) {
  files.can_write = false;
  Begin();
  AddRow(SymbolListview, u"Neu");
  Wait();
  EXPECT_FALSE(files.files.contains(kFile));
  files.can_write = true;
  AddRow(SymbolListview, u"Neuer");
  Wait();
  EXPECT_EQ(KeptNames(), (std::vector<Text>{u"Neu", u"Neuer"}));
}

TEST_F(UnsavedRowsKeeperTest, UnaskedEndKeepsAtOnceWhatIsUnsaved) {
  Begin();
  AddRow(SymbolListview, u"Neu");
  keeper.Finish();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
  EXPECT_FALSE(timer.Enabled());
  SymbolListview.Clear();
  keeper.Note();
  EXPECT_FALSE(timer.Enabled());
  keeper.Discard();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"}) << "whatever happens after that";
}

TEST_F(UnsavedRowsKeeperTest, AfterTheEndNothingIsWrittenAnyMore) {
  Begin();
  AddRow(SymbolListview, u"Neu");
  keeper.Discard();
  AddRow(SymbolListview, u"Neuer");
  keeper.Note();
  EXPECT_FALSE(timer.Enabled());
  SymbolListview.Select(RowNamed(SymbolListview, u"Neuer"));
  Check2.Click();
  ASSERT_FALSE(unsaved.PartOf(SymbolListview.SelectedRow()).cells.empty());
  keeper.Finish();
  EXPECT_FALSE(files.files.contains(kFile));
}

TEST_F(UnsavedRowsKeeperTest, BeforeTheBeginningTheFileIsLeftAlone) {
  Leave({true, {Row(u"Neu")}});
  AddRow(SymbolListview, u"Zu früh");
  keeper.Note();
  EXPECT_FALSE(timer.Enabled());
  keeper.Finish();
  keeper.Discard();
  EXPECT_EQ(KeptNames(), std::vector<Text>{u"Neu"});
}

}  // namespace
}  // namespace catalogue
