// Which station is played, and how often it is asked for, when selecting and starting meet.

#include <utility>

#include "tests/ui/playing_window_fixture.h"
#include "ui/playback_control.h"

namespace app {
namespace {

using PlaybackSelectionTest = PlayingWindowTest;

TEST_F(PlaybackSelectionTest, StaleDetailsAreResolvedAgainBeforeTheStart) {
  StartAndPlay();
  Form().TextBox1[1].SetText(u"http://neu/");
  Form().Command8[2].Click();
  ASSERT_TRUE(window->State().details_are_stale);
  Form().Command1.Click();
  EXPECT_EQ(CountCalls(".Stop()"), 2U) << "stopped before the new start, and by the opening";
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://neu/\""), 1U);
  EXPECT_FALSE(window->State().details_are_stale);
}

TEST_F(PlaybackSelectionTest, NumberThatTheRecordButtonAppliedIsThatOfTheNextStart) {
  AddStation(u"C", u"http://c/liste.m3u", u"Rock", u"", u"1");
  requests.requests[u"http://c/liste.m3u"].body =
      u"[playlist]\r\nNumberOfEntries=2\r\nFile1=http://eins/\r\nFile2=http://zwei/";
  Start();
  Select(u"C");
  Form().UpDownTextBox1.SetText(u"2");
  Form().Command8[5].Click();
  Form().Command1.Click();
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://zwei/\""), 1U);
}

TEST_F(PlaybackSelectionTest, LinkEditedWhileTheOldOneIsResolvedIsTheOneThatPlays) {
  Start();
  requests.request.states = {1, 4};
  bool edited = false;
  message_loop.on_pump = [&] {
    if (std::exchange(edited, true)) return;
    Form().TextBox1[1].SetText(u"http://neu/");
    Form().Command8[2].Click();
  };
  Select(u"A");
  Form().Command1.Click();
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://neu/\""), 1U);
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://a/\""), 0U);
}

TEST_F(PlaybackSelectionTest, PictureOfTheSelectedStationIsShown) {
  files.files[u"C:\\Programme\\Funkhaus\\RadioJPG\\A.jpg"] = "jpg";
  Start();
  Select(u"A");
  EXPECT_TRUE(Form().Image1.Visible());
  Select(u"B");
  EXPECT_FALSE(Form().Image1.Visible());
}

TEST_F(PlaybackSelectionTest, PictureBelongsToTheStationSelectedWhileAnotherOneStarts) {
  for (const char16_t* name : {u"A", u"B"}) {
    files.files[Text(u"C:\\Programme\\Funkhaus\\RadioJPG\\") + name + u".jpg"] = "jpg";
  }
  Start();
  Select(u"A");
  bool selected = false;
  message_loop.on_sleep = [&](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    if (!std::exchange(selected, true)) Select(u"B");
  };
  Form().Command1.Click();
  EXPECT_EQ(CountCalls(".Start("), 1U);
  EXPECT_EQ(icons.picture_paths[Form().Image1.Picture()], u"C:\\Programme\\Funkhaus\\RadioJPG\\B.jpg");
  EXPECT_EQ(window->State().current_stream_address, u"http://b/");
}

TEST_F(PlaybackSelectionTest, KnownDetailsAreNotFetchedTwice) {
  Start();
  Select(u"A");
  const std::size_t requests_before = requests.calls.size();
  Form().Command1.Click();
  EXPECT_EQ(requests.calls.size(), requests_before);
}

TEST_F(PlaybackSelectionTest, StartInTheMiddleOfASelectionPlaysTheSelectedStation) {
  Start();
  Select(u"A");
  requests.request.states = {1, 4};
  bool started = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(started, true)) Form().Command1.Click();
  };
  Select(u"B");
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://b/\""), 1U);
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://a/\""), 0U);
}

TEST_F(PlaybackSelectionTest, StartInTheMiddleOfTheFirstSelectionPlaysItToo) {
  Start();
  requests.request.states = {1, 4};
  bool started = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(started, true)) Form().Command1.Click();
  };
  Select(u"B");
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://b/\""), 1U);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(PlaybackSelectionTest, StaleDetailsOfTheFilteredListAreThoseOfItsSelectedRow) {
  Start();
  Select(u"A");
  Form().Check1.Click();
  Form().Combo1.SetListIndex(2);
  SelectIn(Form().ExplorerListFilter, u"B");
  Form().ExplorerListFilter.ClickHeader(0);
  ASSERT_TRUE(window->State().details_are_stale);
  Form().Command1.Click();
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://b/\""), 1U);
}

TEST_F(PlaybackSelectionTest, FilterViewWithoutASelectionPlaysTheStationSelectedInTheFullList) {
  StartAndPlay();
  Form().Check3.Click();
  ASSERT_TRUE(window->State().details_are_stale);
  const std::size_t stops = CountCalls(".Stop()");
  const std::size_t requests_before = requests.calls.size();
  Form().Command1.Click();
  EXPECT_GT(CountCalls(".Stop()"), stops);
  EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://a/\""), 2U);
  EXPECT_EQ(requests.calls.size(), requests_before);
  EXPECT_FALSE(window->State().details_are_stale);
}

}  // namespace
}  // namespace app
