#include "ui/recorder_launch.h"

#include "tests/window/window_fixture.h"

namespace app {
namespace {

using Box = test_support::FakeDialogs::Box;

class RecorderLaunchTest : public WindowTest {
 protected:
  RecorderLaunchTest() { internet.answer.status = u"404"; }
};

TEST_F(RecorderLaunchTest, StartsTheToolOfTheProgramFolderWithTheLinkAsItStands) {
  AddStation(u"A", u"http://a/x y");
  Start();
  Select(u"A");
  Form().Command8[5].Click();
  ASSERT_EQ(shell.launches.size(), 1U);
  EXPECT_EQ(shell.launches[0].owner, 1U);
  EXPECT_EQ(shell.launches[0].verb, u"");
  EXPECT_EQ(shell.launches[0].file, u"C:\\Programme\\Funkhaus\\OZRecordFunkhaus.exe");
  EXPECT_EQ(shell.launches[0].parameters, u"http://a/x y");
  EXPECT_EQ(shell.launches[0].folder, u"");
  EXPECT_EQ(shell.launches[0].show, 1);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(RecorderLaunchTest, ProgramFolderThatEndsInASeparatorGetsNoSecondOne) {
  environment.program_folder = u"C:\\";
  Start();
  Form().Command8[5].Click();
  EXPECT_EQ(shell.launches[0].file, u"C:\\OZRecordFunkhaus.exe");
}

TEST_F(RecorderLaunchTest, WithoutASelectionItTellsSoAndStartsAllTheSame) {
  AddStation(u"A", u"http://a/");
  Start();
  Form().Command8[5].Click();
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"Bitte Eintrag markieren oder neu erstellen!", u"", 48}}));
  ASSERT_EQ(shell.launches.size(), 1U);
  EXPECT_EQ(shell.launches[0].parameters, u"");
}

TEST_F(RecorderLaunchTest, WindowThatClosesWhileItTellsSoStartsNothing) {
  Start();
  dialogs.on_box = [this] { Form().form.Close(); };
  Form().Command8[5].Click();
  EXPECT_TRUE(shell.launches.empty());
}

TEST_F(RecorderLaunchTest, ToolThatCannotBeStartedIsNamedInTheStatusLineAndNoBoxIsShown) {
  AddStation(u"A", u"http://a/");
  Start();
  Select(u"A");
  Form().Command8[5].Click();
  EXPECT_EQ(Form().StatusLine.Caption(), u"");
  shell.starts = false;
  Form().Command8[5].Click();
  EXPECT_EQ(Form().StatusLine.Caption(), u"Das Aufnahme-Tool OZRecordFunkhaus ließ sich nicht starten.");
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(RecorderLaunchTest, NumberFieldGoesIntoTheRowOnly) {
  AddStation(u"A", u"http://a/liste.m3u");
  Start();
  Select(u"A");
  Form().UpDownTextBox1.SetText(u"7");
  profile.writes.clear();
  Form().Command8[5].Click();
  EXPECT_EQ(Form().SymbolListview.Rows()[0].cells[app::kM3uNumberCell], u"7");
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_FALSE(window->GetSettings().CatalogueChanged);
}

TEST_F(RecorderLaunchTest, AnotherNumberOfAPlaylistMakesTheDetailsDoubtful) {
  AddStation(u"A", u"http://a/liste.m3u", u"Rock", u"", u"2");
  AddStation(u"B", u"http://b/", u"Rock", u"", u"2");
  Start();
  Select(u"A");
  Form().Command8[5].Click();
  EXPECT_FALSE(window->State().details_are_stale) << "the number is the row's own";
  Form().UpDownTextBox1.SetText(u"7");
  Form().Command8[5].Click();
  EXPECT_TRUE(window->State().details_are_stale);
  Select(u"B");
  Form().Command8[5].Click();
  EXPECT_FALSE(window->State().details_are_stale) << "no number changes the address of a link that is no playlist";
}

TEST_F(RecorderLaunchTest, ActsOnTheFilteredListWhileItIsShown) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  Start();
  Select(u"A");
  Form().Check3.Click();
  Form().Command8[5].Click();
  EXPECT_EQ(shell.launches[0].parameters, u"") << "the filtered list has no selected row";
  SelectIn(Form().ExplorerListFilter, u"A");
  Form().Command8[5].Click();
  EXPECT_EQ(shell.launches[1].parameters, u"http://a/");
}

}  // namespace
}  // namespace app
