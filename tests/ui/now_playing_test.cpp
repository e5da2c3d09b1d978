#include "ui/now_playing.h"

#include <algorithm>
#include <utility>

#include "tests/ui/now_playing_fixture.h"

namespace ui {
namespace {

TEST_F(NowPlayingTest, SelectedStationsTitleIsShown) {
  AddPlayingStation(u"a", "Artist - Song");
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), u"Artist - Song");
  EXPECT_TRUE(Form().Frame3.Visible());
}

TEST_F(NowPlayingTest, FetchEndsWithTheWaitThatInputEnded) {
  AddPlayingStation(u"a", "Artist - Song");
  const Text before = Form().Label4.Caption();
  message_loop.input_ends_wait = true;
  message_loop.on_pump = [this] {
    EXPECT_TRUE(internet.calls.empty()) << "the input is left to whoever the fetch returns to";
  };
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), before);
  EXPECT_FALSE(internet.calls.empty()) << "the header query";
  EXPECT_FALSE(std::any_of(internet.calls.begin(), internet.calls.end(), [](const std::string& call) {
    return call.find("InternetOpenUrlW") != std::string::npos;
  })) << "the reading would wait for the same server again";
}

TEST_F(NowPlayingTest, TitleInUtf8IsRepaired) {
  AddPlayingStation(u"a", "K\xC3\xBCnstler - Lied");
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), u"Künstler - Lied");
}

TEST_F(NowPlayingTest, TitleInTheCodePageStaysAsItIs) {
  AddPlayingStation(u"a", "K\xFCnstler - Lied");
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), u"Künstler - Lied");
}

TEST_F(NowPlayingTest, EveryByteComesThroughAsItsCharacterOfTheCodePageBesidesTheBlocksOwnSigns) {
  AddPlayingStation(u"a", "");
  Select(u"a");
  for (int value = 0; value < 256; ++value) {
    const std::string bytes = "x" + std::string(1, static_cast<char>(value)) + "y";
    Text expected = conversion.MultiByteToWideChar(platform::CodePage::kAnsi, bytes);
    if (value == '\n' || value == '\'') expected = u"xy";
    if (value == ';' || value == '=') expected = u"x";
    EXPECT_EQ(TitleFetchedFor(bytes), expected) << value;
  }
}

TEST_F(NowPlayingTest, EveryUtf8FormOfALetterAloneIsRepaired) {
  AddPlayingStation(u"a", "");
  Select(u"a");
  for (const Text letter : {u"Á", u"Í", u"Ý", u"“", u"”", u"„", u"‘", u"’", u"ı", u"ß", u"😀"}) {
    const std::string bytes = conversion.WideCharToMultiByte(platform::CodePage::kUtf8, letter);
    EXPECT_EQ(TitleFetchedFor(bytes), letter) << bytes;
    EXPECT_EQ(TitleFetchedFor("x" + bytes + "y"), u"x" + letter + u"y") << bytes;
  }
}

TEST_F(NowPlayingTest, OnlyTheFirst2048BytesDecideWhetherATitleIsUtf8) {
  AddPlayingStation(u"a", "");
  Select(u"a");
  EXPECT_EQ(TitleFetchedFor(std::string(2046, 'a') + "\xC3\xBC"), Text(2046, u'a') + u"ü");
  EXPECT_EQ(TitleFetchedFor(std::string(2047, 'a') + "\xC3\xBC"), Text(2047, u'a') + u"Ã¼");
}

TEST_F(NowPlayingTest, Utf8FormsWithBytesThatTheCodePageLacksAreRepaired) {
  // Á, Í and Ý carry the bytes 81, 8D and 9D, curly quotation marks 9D again, the dotless i and emoji more.
  const std::string title = "\xC3\x81\xC3\x8D\xC3\x9D \xE2\x80\x9Cx\xE2\x80\x9D \xC4\xB1 \xF0\x9F\x98\x80";
  AddPlayingStation(u"a", title);
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), u"ÁÍÝ “x” ı 😀");
}

TEST_F(NowPlayingTest, StationWithoutAnIntervalLeavesTheLabelAndThePanel) {
  AddStation(u"a", u"http://a/s");
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), u"Titel:");
  EXPECT_FALSE(Form().Frame3.Visible());
}

TEST_F(NowPlayingTest, StationWithoutATitleSaysSoAndLeavesThePanel) {
  AddPlayingStation(u"a", "");
  for (const bool visible : {false, true}) {
    Form().Frame3.SetVisible(visible);
    Form().Label4.SetCaption(u"Titel:");
    Select(u"a");
    EXPECT_EQ(Form().Label4.Caption(), u"Keine Info!");
    EXPECT_EQ(Form().Frame3.Visible(), visible);
  }
}

TEST_F(NowPlayingTest, TimeOutIsShownAsIfItWereATitle) {
  AddPlayingStation(u"a", "x");
  internet.answers[u"http://a/s"].reads.clear();
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), u"TimeOut");
  EXPECT_TRUE(Form().Frame3.Visible());
}

TEST_F(NowPlayingTest, FailedHeaderQueryUsesTheIntervalOfTheStationBefore) {
  AddPlayingStation(u"a", "Lied");
  AddPlayingStation(u"b", "Anderes");
  internet.answers[u"b:80/s"].status = u"500";
  Select(u"a");
  Select(u"b");
  EXPECT_EQ(Form().Label4.Caption(), u"Anderes");
}

TEST_F(NowPlayingTest, TimerFetchesTheTitleAgain) {
  AddPlayingStation(u"a", "Eins");
  Select(u"a");
  internet.answers[u"http://a/s"] = StationPlaying("Zwei");
  Form().Timer2.SetEnabled(true);
  Form().Timer2.Fire();
  EXPECT_EQ(Form().Label4.Caption(), u"Zwei");
}

TEST_F(NowPlayingTest, SecondActionFetchesFirstAndSwitchesPollingThenAndLeavesThePanel) {
  AddPlayingStation(u"a", "Eins");
  Select(u"a");
  internet.answers[u"http://a/s"] = StationPlaying("Zwei");
  for (const bool polled_before : {false, true}) {
    Form().Label4.SetCaption(u"");
    int reads = 0;
    internet.before_read = [&] {
      ++reads;
      EXPECT_EQ(Form().Timer2.Enabled(), polled_before) << "switched after the fetch";
    };
    Form().Command3.ContextClick();
    EXPECT_EQ(reads, 1);
    EXPECT_EQ(Form().Label4.Caption(), u"Zwei");
    EXPECT_EQ(Form().Timer2.Enabled(), !polled_before);
    EXPECT_TRUE(Form().Frame3.Visible());
  }
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(NowPlayingTest, SecondActionWithoutAStationAsksNobodyAndSwitchesPolling) {
  Form().Command3.ContextClick();
  EXPECT_TRUE(internet.calls.empty());
  EXPECT_EQ(Form().Label4.Caption(), u"Titel:");
  EXPECT_TRUE(Form().Timer2.Enabled());
}

TEST_F(NowPlayingTest, SecondActionThatTheWindowsClosingEndsLeavesPollingOff) {
  AddPlayingStation(u"a", "Eins");
  Select(u"a");
  internet.before_read = [this] { CloseWindow(); };
  Form().Command3.ContextClick();
  EXPECT_FALSE(Form().Timer2.Enabled());
}

TEST_F(NowPlayingTest, TitleThatThePollingFetchedWhileItWasStoppedIsNotShown) {
  AddPlayingStation(u"a", "Eins");
  Select(u"a");
  internet.answers[u"http://a/s"] = StationPlaying("Zwei");
  Form().Frame3.SetVisible(false);
  Form().Timer2.SetEnabled(true);
  internet.before_read = [this] { Form().Timer2.SetEnabled(false); };
  Form().Timer2.Fire();
  EXPECT_EQ(Form().Label4.Caption(), u"Eins");
  EXPECT_FALSE(Form().Frame3.Visible());
}

TEST_F(NowPlayingTest, IntervalThatIsNoNumberReadsNothing) {
  AddPlayingStation(u"a", "Lied");
  internet.answers[u"a:80/s"].raw_headers = u"ICY 200 OK\r\nicy-metaint:viel\r\n\r\n";
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), u"Keine Info!");
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"--");
  EXPECT_TRUE(internet.reads.empty());
}

TEST_F(NowPlayingTest, FetchThatBeginsDuringAnotherOneWins) {
  AddPlayingStation(u"a", "Titel A");
  AddPlayingStation(u"b", "Titel B");
  bool selected = false;
  internet.before_read = [&] {
    if (!std::exchange(selected, true)) Select(u"b");
  };
  Select(u"a");
  EXPECT_EQ(Form().Label4.Caption(), u"Titel B");
}

TEST_F(NowPlayingTest, QueryEventDoesNothing) {
  now_playing.cFunkhaus_QueryStream(true);
  EXPECT_EQ(Form().Label4.Caption(), u"Titel:");
}
}  // namespace
}  // namespace ui
