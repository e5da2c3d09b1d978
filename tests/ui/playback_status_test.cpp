// What the status line says at the moments of playing, in a window over a scripted monitor.

#include <utility>

#include "app/state/status_sentences.h"
#include "tests/ui/playing_window_fixture.h"
#include "ui/playback_control.h"

namespace app {
namespace {

using platform::PlaybackFailure;
using platform::PlaybackState;

class PlaybackStatusTest : public PlayingWindowTest {
 protected:
  const Text& Line() { return Form().StatusLine.Caption(); }
  void Reach(PlaybackState state, PlaybackFailure failure = PlaybackFailure::kNone) {
    playback_monitor.status = {};
    playback_monitor.status.state = state;
    playback_monitor.status.failure = failure;
  }
  /// The monitor reports this from the opening on.
  void ReachWhenOpened(PlaybackState state, PlaybackFailure failure = PlaybackFailure::kNone) {
    media.on_call = [=, this](const std::string& call) {
      if (call.find("CreateObjectFromURL") != std::string::npos) Reach(state, failure);
    };
  }
  void PlayA() {
    Start();
    Select(u"A");
    ReachWhenOpened(PlaybackState::kConnecting);
    Form().Command1.Click();
    media.play_state = player::kPlayStateRunning;
    Reach(PlaybackState::kPlaying);
    Form().tmPlay.Fire();
  }
};

TEST_F(PlaybackStatusTest, LineIsEmptyUntilAStart) {
  Start();
  EXPECT_EQ(Line(), u"");
  Select(u"A");
  Form().Command6.Click();
  EXPECT_EQ(Line(), u"");
}

TEST_F(PlaybackStatusTest, StationIsNamedBeforeItsAddressIsOpened) {
  Start();
  Select(u"A");
  std::vector<Text> while_opening;
  media.on_call = [&](const std::string& call) {
    if (call.find("CreateObjectFromURL") != std::string::npos) while_opening.push_back(Line());
  };
  Form().Command1.Click();
  EXPECT_EQ(while_opening, std::vector<Text>{u"Verbinde mit A …"});
}

TEST_F(PlaybackStatusTest, EveryTickFollowsPlaying) {
  PlayA();
  EXPECT_EQ(Line(), u"A läuft.");
  playback_monitor.status.codec = u"MP3";
  playback_monitor.status.bit_rate = 128000;
  EXPECT_EQ(Line(), u"A läuft.") << "nothing asks between the ticks";
  Form().tmPlay.Fire();
  EXPECT_EQ(Line(), u"A – MP3, 128 kbit/s");
  Reach(PlaybackState::kReconnecting);
  playback_monitor.status.seconds_to_next_try = 3;
  Form().tmPlay.Fire();
  EXPECT_EQ(Line(), u"A: Verbindung verloren, nächster Versuch in 3 s");
}

TEST_F(PlaybackStatusTest, NameIsThatOfTheStartedStationWhateverIsSelectedLater) {
  PlayA();
  Select(u"B");
  Reach(PlaybackState::kBuffering);
  Form().tmPlay.Fire();
  EXPECT_EQ(Line(), u"A: Puffere 0 %");
}

TEST_F(PlaybackStatusTest, StationSelectedWhileAnotherOneOpensDoesNotTakeItsPlace) {
  Start();
  Select(u"A");
  ReachWhenOpened(PlaybackState::kConnecting);
  bool selected = false;
  message_loop.on_sleep = [&](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    if (!std::exchange(selected, true)) Select(u"B");
  };
  Form().Command1.Click();
  ASSERT_TRUE(selected);
  EXPECT_EQ(Line(), u"Verbinde mit A …");
}

TEST_F(PlaybackStatusTest, StopSaysSo) {
  PlayA();
  Reach(PlaybackState::kStopped);
  Form().Command6.Click();
  EXPECT_EQ(Line(), u"Gestoppt.");
}

TEST_F(PlaybackStatusTest, StopInTheMiddleOfAStartSaysSoToo) {
  Start();
  Select(u"A");
  ReachWhenOpened(PlaybackState::kConnecting);
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    Form().Command6.Click();
  };
  Form().Command1.Click();
  EXPECT_EQ(Line(), u"Gestoppt.");
}

TEST_F(PlaybackStatusTest, SecondStartInTheMiddleOfAStartIsTheOneThatIsFollowed) {
  Start();
  Select(u"A");
  ReachWhenOpened(PlaybackState::kConnecting);
  bool started = false;
  message_loop.on_sleep = [&](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    if (std::exchange(started, true)) return;
    Select(u"B");
    Form().Command1.Click();
    Reach(PlaybackState::kPlaying);
  };
  Form().Command1.Click();
  Form().tmPlay.Fire();
  EXPECT_EQ(Line(), u"B läuft.");
}

TEST_F(PlaybackStatusTest, CauseIsShownBeforeTheBoxAndStaysAfterIt) {
  system_messages.messages[platform::kErrorFileNotFound] = u"weg";
  media.open_result = platform::kErrorFileNotFound;
  Start();
  Select(u"A");
  ReachWhenOpened(PlaybackState::kFailed, PlaybackFailure::kNotFound);
  Text under_the_box;
  dialogs.on_box = [&] { under_the_box = Line(); };
  Form().Command1.Click();
  EXPECT_EQ(BoxTexts(), std::vector<Text>{u"weg"});
  EXPECT_EQ(under_the_box, u"Die Datei von A gibt es nicht.");
  EXPECT_EQ(Line(), under_the_box);
}

TEST_F(PlaybackStatusTest, CauseOfAnUnreportedFailureIsShownThoughNoBoxComes) {
  media.open_result = platform::kEFail;
  Start();
  Select(u"A");
  ReachWhenOpened(PlaybackState::kFailed, PlaybackFailure::kNoAnswer);
  Form().Command1.Click();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(Line(), u"Der Server von A antwortet nicht.");
  Form().Command6.Click();
  EXPECT_EQ(Line(), u"Der Server von A antwortet nicht.") << "there is nothing to be stopped";
}

TEST_F(PlaybackStatusTest, CauseOfAnUnreportedFailureIsShownThoughTheBoxNamesAnEarlierOne) {
  system_messages.messages[platform::kErrorFileNotFound] = u"weg";
  media.open_result = platform::kErrorFileNotFound;
  Start();
  Select(u"A");
  ReachWhenOpened(PlaybackState::kFailed, PlaybackFailure::kNotFound);
  Form().Command1.Click();
  ASSERT_EQ(Line(), u"Die Datei von A gibt es nicht.");
  media.open_result = platform::kEFail;
  Select(u"B");
  ReachWhenOpened(PlaybackState::kFailed, PlaybackFailure::kNoAnswer);
  Text under_the_box;
  dialogs.on_box = [&] { under_the_box = Line(); };
  Form().Command1.Click();
  EXPECT_EQ(BoxTexts(), (std::vector<Text>{u"weg", u"weg"}));
  EXPECT_EQ(under_the_box, u"Der Server von B antwortet nicht.");
  EXPECT_EQ(Line(), under_the_box);
}

TEST_F(PlaybackStatusTest, ItemThatDoesNotComeToPlaySaysSo) {
  media.faults["IMFMetadata::GetAllPropertyNames"] = platform::kEFail;
  Start();
  Select(u"A");
  ReachWhenOpened(PlaybackState::kConnecting);
  Form().Command1.Click();
  EXPECT_EQ(Line(), u"A kann nicht abgespielt werden.") << "its properties cannot be read";

  media.faults.clear();
  media.faults["IMFMediaSession::Start"] = platform::kEFail;
  Select(u"B");
  Form().Command1.Click();
  EXPECT_EQ(Line(), u"B kann nicht abgespielt werden.") << "its session does not start";
}

TEST_F(PlaybackStatusTest, StaleDetailsAreResolvedUnderASentenceOfTheirOwn) {
  PlayA();
  Form().TextBox1[1].SetText(u"http://neu/");
  Form().Command8[2].Click();
  ASSERT_TRUE(window->State().details_are_stale);
  std::vector<Text> waiting;
  message_loop.on_pump = [&] { waiting.push_back(Line()); };
  ReachWhenOpened(PlaybackState::kConnecting);
  Form().Command1.Click();
  ASSERT_GT(waiting.size(), 2U);
  EXPECT_EQ(waiting.front(), u"Ermittle die Adresse …");
  EXPECT_EQ(waiting.back(), u"Verbinde mit A …");
}

TEST_F(PlaybackStatusTest, StopWhileTheDetailsAreResolvedEndsTheSentence) {
  PlayA();
  Form().TextBox1[1].SetText(u"http://neu/");
  Form().Command8[2].Click();
  bool stopped = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(stopped, true)) Form().Command6.Click();
  };
  Form().Command1.Click();
  ASSERT_TRUE(stopped);
  EXPECT_EQ(Line(), u"Gestoppt.");
}

TEST_F(PlaybackStatusTest, StationWithoutANameIsCalledByItsAddress) {
  Start();
  controls::ListRow nameless;
  nameless.cells.Set(app::kLinkCell, u"http://namenlos/");
  Form().SymbolListview.AddRow(nameless);
  Select(u"");
  ReachWhenOpened(PlaybackState::kConnecting);
  Form().Command1.Click();
  EXPECT_EQ(Line(), u"Verbinde mit http://namenlos/ …");
}

TEST_F(PlaybackStatusTest, SelectedStationWhoseServerIsSilentIsNamed) {
  internet.answers[u"b:80/"].reachable = false;
  internet.answers[u"b:80/"].failure = platform::InternetFailure::kRefused;
  Start();
  Select(u"B");
  EXPECT_EQ(Line(), u"Der Server von B nimmt keine Verbindung an.");
  Select(u"A");
  EXPECT_EQ(Line(), u"");
  PlayA();
  Select(u"B");
  EXPECT_EQ(Line(), u"A läuft.") << "what plays is not disturbed";
}

TEST_F(PlaybackStatusTest, StationThatIsNotAskedIsNotBlamedForTheOneBefore) {
  AddStation(u"C", u"");
  internet.answers[u"b:80/"].reachable = false;
  Start();
  Select(u"B");
  ASSERT_EQ(Line(), u"Der Server von B antwortet nicht.");
  Select(u"C");
  EXPECT_EQ(Line(), u"");
}

TEST_F(PlaybackStatusTest, SelectionThatIsOvertakenNamesNoServer) {
  internet.answers[u"b:80/"].reachable = false;
  Start();
  bool selected = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(selected, true)) Select(u"A");
  };
  Select(u"B");
  ASSERT_TRUE(selected);
  EXPECT_EQ(Line(), u"");
}

TEST_F(PlaybackStatusTest, PausedStationIsSaidToBePaused) {
  PlayA();
  media.play_state = player::kPlayStatePaused;
  Reach(PlaybackState::kPaused);
  Form().Command6.Click();
  EXPECT_EQ(Line(), u"A ist angehalten.");
}

TEST_F(PlaybackStatusTest, LineSpeaksTheUsersLanguage) {
  profile.Set(kOptIniPath, u"Pfad1", u"Languages", u"Test");
  files.files[u"C:\\Programme\\Funkhaus\\Languages\\Test.lng"] = "";
  profile.Set(u"C:\\Programme\\Funkhaus\\Languages\\Test.lng", u"Common", Text(sentences::kConnecting),
              u"Now %1!");
  Start();
  Select(u"A");
  ReachWhenOpened(PlaybackState::kConnecting);
  Form().Command1.Click();
  EXPECT_EQ(Line(), u"Now A!");
}

}  // namespace
}  // namespace app
