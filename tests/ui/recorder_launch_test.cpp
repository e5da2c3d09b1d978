#include "ui/recorder_launch.h"

#include "app/state/status_sentences.h"
#include "tests/support/fake_notices.h"
#include "tests/support/feature_rig.h"

namespace ui {
namespace {

using platform::Text;
using Box = test_support::FakeDialogs::Box;

class RecorderLaunchTest : public test_support::FeatureTest {
 protected:
  void Select(controls::ListView& list, const Text& name) { list.Select(RowNamed(list, name)); }
  void Select(const Text& name) { Select(form.SymbolListview, name); }
  Text NumberOf(const controls::ListView& list, const Text& name) {
    return list.Cell(RowNamed(list, name), app::kM3uNumberCell);
  }

  test_support::FakeNotices notices;
  RecorderLaunch recorder{{.UpDownTextBox1 = form.UpDownTextBox1, .lists = lists},
                          {.environment = environment, .dialogs = dialogs, .shell = shell},
                          state,
                          notices,
                          life};
};

TEST_F(RecorderLaunchTest, StartsTheToolOfTheProgramFolderWithTheLinkAsItStands) {
  AddStation(u"A", u"http://a/x y");
  Select(u"A");
  recorder.Launch();
  ASSERT_EQ(shell.launches.size(), 1U);
  EXPECT_EQ(shell.launches[0].owner, 1U);
  EXPECT_EQ(shell.launches[0].verb, u"");
  EXPECT_EQ(shell.launches[0].file, u"C:\\Programme\\Funkhaus\\OZRecordFunkhaus.exe");
  EXPECT_EQ(shell.launches[0].parameters, u"http://a/x y");
  EXPECT_EQ(shell.launches[0].folder, u"");
  EXPECT_EQ(shell.launches[0].show, 1);
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_TRUE(notices.notices.empty());
}

TEST_F(RecorderLaunchTest, ProgramFolderThatEndsInASeparatorGetsNoSecondOne) {
  environment.program_folder = u"C:\\";
  recorder.Launch();
  EXPECT_EQ(shell.launches[0].file, u"C:\\OZRecordFunkhaus.exe");
}

TEST_F(RecorderLaunchTest, WithoutASelectionItSaysSoAndStartsAllTheSame) {
  AddStation(u"A", u"http://a/", u"Rock", u"", u"3");
  form.UpDownTextBox1.SetText(u"7");
  recorder.Launch();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Bitte Eintrag markieren oder neu erstellen!", u"", 48}}));
  ASSERT_EQ(shell.launches.size(), 1U);
  EXPECT_EQ(shell.launches[0].parameters, u"");
  EXPECT_EQ(shell.launches[0].folder, u"");
  EXPECT_EQ(shell.launches[0].show, 1);
  EXPECT_EQ(NumberOf(form.SymbolListview, u"A"), u"3");
}

TEST_F(RecorderLaunchTest, WindowThatClosesDuringThatMessageStartsNothing) {
  dialogs.on_box = [this] { CloseWindow(); };
  recorder.Launch();
  EXPECT_TRUE(shell.launches.empty());
}

TEST_F(RecorderLaunchTest, ToolThatCannotBeStartedIsNamedInTheStatusLineAndNoBoxIsShown) {
  AddStation(u"A", u"http://a/");
  Select(u"A");
  shell.starts = false;
  recorder.Launch();
  ASSERT_EQ(notices.notices.size(), 1U);
  EXPECT_EQ(notices.notices[0].sentence, app::sentences::kNoRecorder);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(RecorderLaunchTest, NumberFieldGoesIntoTheRowOnlyAlsoWhenItIsEmptyOrHidden) {
  AddStation(u"A", u"http://a/liste.m3u");
  Select(u"A");
  for (const bool visible : {true, false}) {
    for (const char16_t* number : {u"7", u""}) {
      form.UpDownTextBox1.SetVisible(visible);
      form.UpDownTextBox1.SetText(number);
      recorder.Launch();
      EXPECT_EQ(NumberOf(form.SymbolListview, u"A"), number) << visible;
    }
  }
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_FALSE(settings.CatalogueChanged);
}

TEST_F(RecorderLaunchTest, AnotherNumberOfAPlaylistMakesTheDetailsStale) {
  AddStation(u"A", u"http://a/liste.m3u", u"Rock", u"", u"2");
  Select(u"A");
  form.UpDownTextBox1.SetText(u"2");
  recorder.Launch();
  EXPECT_FALSE(state.details_are_stale) << "the number is the row's own";
  form.UpDownTextBox1.SetText(u"7");
  recorder.Launch();
  EXPECT_TRUE(state.details_are_stale);
  state.details_are_stale = false;
  form.UpDownTextBox1.SetVisible(false);
  form.UpDownTextBox1.SetText(u"8");
  recorder.Launch();
  EXPECT_FALSE(state.details_are_stale) << "no number changes the address of a link that is no playlist";
}

TEST_F(RecorderLaunchTest, AnotherRowIsRecordedWithoutTheNumberOfTheSelectedOne) {
  AddStation(u"A", u"http://a/", u"Rock", u"", u"1");
  AddStation(u"B", u"http://b/ x", u"Rock", u"", u"2");
  Select(u"A");
  form.UpDownTextBox1.SetText(u"7");
  recorder.LaunchFor(form.SymbolListview, RowNamed(form.SymbolListview, u"B"));
  ASSERT_EQ(shell.launches.size(), 1U);
  EXPECT_EQ(shell.launches[0].file, u"C:\\Programme\\Funkhaus\\OZRecordFunkhaus.exe");
  EXPECT_EQ(shell.launches[0].parameters, u"http://b/ x");
  EXPECT_EQ(NumberOf(form.SymbolListview, u"A"), u"1");
  EXPECT_EQ(NumberOf(form.SymbolListview, u"B"), u"2");
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(RecorderLaunchTest, SelectedRowIsRecordedAsByTheButton) {
  AddStation(u"A", u"http://a/", u"Rock", u"", u"1");
  Select(u"A");
  form.UpDownTextBox1.SetText(u"7");
  recorder.LaunchFor(form.SymbolListview, form.SymbolListview.SelectedRow());
  EXPECT_EQ(shell.launches[0].parameters, u"http://a/");
  EXPECT_EQ(NumberOf(form.SymbolListview, u"A"), u"7");
}

TEST_F(RecorderLaunchTest, RowOfAWindowThatIsClosingIsNotRecorded) {
  AddStation(u"A", u"http://a/");
  CloseWindow();
  recorder.LaunchFor(form.SymbolListview, RowNamed(form.SymbolListview, u"A"));
  EXPECT_TRUE(shell.launches.empty());
}

TEST_F(RecorderLaunchTest, RowThatCannotBeRecordedIsReportedToo) {
  AddStation(u"A", u"http://a/");
  shell.starts = false;
  recorder.LaunchFor(form.SymbolListview, RowNamed(form.SymbolListview, u"A"));
  ASSERT_EQ(notices.notices.size(), 1U);
  EXPECT_EQ(notices.notices[0].sentence, app::sentences::kNoRecorder);
}

TEST_F(RecorderLaunchTest, ActsOnTheFilteredListWhileItIsShown) {
  AddStation(u"A", u"http://a/", u"Rock", u"", u"1");
  AddStationTo(form.ExplorerListFilter, u"A", u"http://a/", u"Rock", u"", u"1");
  Select(u"A");
  ShowFilteredList();
  form.UpDownTextBox1.SetText(u"7");
  recorder.Launch();
  EXPECT_EQ(shell.launches[0].parameters, u"") << "the filtered list has no selected row";
  Select(form.ExplorerListFilter, u"A");
  recorder.Launch();
  EXPECT_EQ(shell.launches[1].parameters, u"http://a/");
  EXPECT_EQ(NumberOf(form.ExplorerListFilter, u"A"), u"7");
  EXPECT_EQ(NumberOf(form.SymbolListview, u"A"), u"1");
}

}  // namespace
}  // namespace ui
