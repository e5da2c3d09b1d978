#include "catalogue/row_commands.h"

#include "app/state/status_sentences.h"
#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using controls::CheckValue;
using controls::ListView;
using controls::RowId;

class RowCommandsTest : public CatalogueTest {
 protected:
  RowCommandsTest() {
    AddStation(u"A", u"Rock", u"http://a", u"1");
    AddStation(u"B", u"Dance", u"http://b\r");
    AddStation(u"C", u"Dance", u" ");
    store.LoadStations(u"");
  }
  RowId Full(const Text& name) { return RowNamed(SymbolListview, name); }
  /// Selects a row as the details do, which show its mark in the editor.
  void Select(ListView& list, RowId row) {
    list.Select(row);
    state.filling_fields = true;
    Check2.SetValue(list.Cell(row, app::kFavouriteCell) == u"1" ? CheckValue::kChecked
                                                                : CheckValue::kUnchecked);
    state.filling_fields = false;
  }

  std::vector<std::pair<const ListView*, RowId>> recorded;
  test_support::FakeClipboard clipboard;
  RowCommands commands{{form1.RowFavourite, form1.RowRecording, form1.RowLink, Check2, lists},
                       writer,
                       state,
                       clipboard,
                       {[this](ListView& list, RowId row) { recorded.emplace_back(&list, row); }}};
};

TEST_F(RowCommandsTest, FavouriteIsCheckedForAFavouriteAndFollowsTheCell) {
  EXPECT_TRUE(form1.RowFavourite.Offer(SymbolListview, Full(u"A")).checked);
  EXPECT_FALSE(form1.RowFavourite.Offer(SymbolListview, Full(u"B")).checked);
  SymbolListview.SetCell(Full(u"B"), app::kFavouriteCell, u"1");
  EXPECT_TRUE(form1.RowFavourite.Offer(SymbolListview, Full(u"B")).checked);
  EXPECT_EQ(form1.RowFavourite.Kind(), controls::RowCommandKind::kSwitch);
}

TEST_F(RowCommandsTest, FavouriteOfOneRowIsWrittenAtOnceAndIsNoUnsavedChange) {
  Select(SymbolListview, Full(u"A"));
  form1.RowFavourite.Choose(SymbolListview, Full(u"B"), true);
  EXPECT_EQ(SymbolListview.Cell(Full(u"B"), app::kFavouriteCell), u"1");
  EXPECT_EQ(profile.Get(kStationFile, u"B", u"Favorit"), u"1");
  EXPECT_EQ(profile.writes.size(), 1U);
  EXPECT_FALSE(settings.CatalogueChanged);
  EXPECT_EQ(SymbolListview.SelectedRow(), Full(u"A"));
  form1.RowFavourite.Choose(SymbolListview, Full(u"B"), false);
  EXPECT_EQ(profile.Get(kStationFile, u"B", u"Favorit"), u"");
}

TEST_F(RowCommandsTest, EditorsBoxFollowsForTheRowThatItShowsAndWritesNothingItself) {
  Select(SymbolListview, Full(u"B"));
  form1.RowFavourite.Choose(SymbolListview, Full(u"B"), true);
  EXPECT_TRUE(Check2.Checked());
  EXPECT_EQ(profile.writes.size(), 1U);
  EXPECT_FALSE(state.filling_fields);
  form1.RowFavourite.Choose(SymbolListview, Full(u"A"), false);
  EXPECT_TRUE(Check2.Checked()) << "that is another row's mark";
}

TEST_F(RowCommandsTest, FavouriteInAFilterViewChangesThatViewAndTheFile) {
  Check3.Click();
  Select(ExplorerListFilter, RowNamed(ExplorerListFilter, u"A"));
  form1.RowFavourite.Choose(ExplorerListFilter, RowNamed(ExplorerListFilter, u"A"), false);
  EXPECT_EQ(profile.Get(kStationFile, u"A", u"Favorit"), u"");
  EXPECT_FALSE(Check2.Checked());
  EXPECT_EQ(ExplorerListFilter.Count(), 1U) << "it stays until the view is loaded again";
}

TEST_F(RowCommandsTest, RowOfAHiddenListIsNotTheOneInTheEditor) {
  Select(SymbolListview, Full(u"B"));
  Check3.Click();
  form1.RowFavourite.Choose(SymbolListview, Full(u"B"), true);
  EXPECT_FALSE(Check2.Checked());
}

TEST_F(RowCommandsTest, FavouriteThatCannotBeWrittenIsReportedAndStaysAnUnsavedChange) {
  profile.fail_writes = true;
  form1.RowFavourite.Choose(SymbolListview, Full(u"B"), true);
  EXPECT_EQ(SymbolListview.Cell(Full(u"B"), app::kFavouriteCell), u"1");
  ASSERT_EQ(notices.notices.size(), 1U);
  EXPECT_EQ(notices.notices[0].sentence, app::sentences::kNotWritten);
  EXPECT_TRUE(settings.CatalogueChanged);
}

TEST_F(RowCommandsTest, LinkIsCopiedWithoutTheLineEndThatAnImportLeftAtIt) {
  form1.RowLink.Choose(SymbolListview, Full(u"B"));
  EXPECT_EQ(clipboard.text, u"http://b");
  form1.RowLink.Choose(SymbolListview, Full(u"A"));
  EXPECT_EQ(clipboard.text, u"http://a");
}

TEST_F(RowCommandsTest, RecordingIsForTheChosenRow) {
  Select(SymbolListview, Full(u"A"));
  form1.RowRecording.Choose(SymbolListview, Full(u"B"));
  EXPECT_EQ(recorded, (std::vector<std::pair<const ListView*, RowId>>{{&SymbolListview, Full(u"B")}}));
}

TEST_F(RowCommandsTest, RowWithoutALinkCanBeNeitherRecordedNorItsLinkCopied) {
  for (controls::RowCommand* command : {&form1.RowRecording, &form1.RowLink}) {
    EXPECT_TRUE(command->Offer(SymbolListview, Full(u"A")).available);
    EXPECT_FALSE(command->Offer(SymbolListview, Full(u"C")).available);
    EXPECT_EQ(command->Kind(), controls::RowCommandKind::kAction);
  }
  EXPECT_TRUE(form1.RowFavourite.Offer(SymbolListview, Full(u"C")).available);
}

}  // namespace
}  // namespace catalogue
