#include "ui/sleep_guard.h"

#include "tests/ui/desktop_fixture.h"

namespace app {
namespace {

using platform::PlaybackState;

class SleepGuardTest : public DesktopTest {
 protected:
  [[nodiscard]] bool Awake() const { return desktop.sleep_inhibitor.Awake(); }
};

TEST_F(SleepGuardTest, ComputerStaysAwakeFromTheFirstSoundToStop) {
  Start();
  Select(u"a");
  Form().Command1.Click();
  Reach(PlaybackState::kConnecting);
  EXPECT_FALSE(Awake());
  Sound();
  EXPECT_TRUE(Awake());
  for (int tick = 0; tick < 5; ++tick) Form().tmPlay.Fire();
  EXPECT_EQ(desktop.sleep_inhibitor.held, 1);
  Stop();
  EXPECT_FALSE(Awake());
  EXPECT_EQ(desktop.sleep_inhibitor.released, 1);
}

TEST_F(SleepGuardTest, EveryEndOfPlayingLetsItSleep) {
  Start();
  for (const auto state : {PlaybackState::kEnded, PlaybackState::kFailed, PlaybackState::kPaused}) {
    Play(u"a");
    ASSERT_TRUE(Awake());
    Reach(state);
    EXPECT_FALSE(Awake());
    Stop();
  }
}

TEST_F(SleepGuardTest, EndOfTheProgramLetsItSleep) {
  Start();
  Play(u"a");
  Form().form.Close();
  EXPECT_FALSE(Awake());
  window.reset();
  EXPECT_EQ(desktop.sleep_inhibitor.released, 1);
}

TEST_F(SleepGuardTest, EndOfAWindowThatWasNeverClosedLetsItSleep) {
  Start();
  Play(u"a");
  window.reset();
  EXPECT_FALSE(Awake());
}

TEST_F(SleepGuardTest, TickInTheLastMessagesOfTheWindowKeepsNothingAwake) {
  Start();
  Play(u"a");
  int ticks = 0;
  const auto tick = Form().tmPlay.Ticked.Subscribe([&] { ++ticks; });
  message_loop.on_pump = [this] { Form().tmPlay.Fire(); };
  Form().form.Close();
  ASSERT_GT(ticks, 0);
  EXPECT_FALSE(Awake());
  EXPECT_EQ(desktop.sleep_inhibitor.held, 1);
}

TEST_F(SleepGuardTest, LostStationKeepsItAwakeForFiveMinutes) {
  Start();
  Play(u"a");
  Reach(PlaybackState::kReconnecting);
  clock.whole_seconds += ui::SleepGuard::kPatienceSeconds - 1;
  Form().tmPlay.Fire();
  EXPECT_TRUE(Awake());
  clock.whole_seconds += 1;
  Form().tmPlay.Fire();
  EXPECT_FALSE(Awake());
  Reach(PlaybackState::kPlaying);
  EXPECT_TRUE(Awake()) << "it is heard again";
}

TEST_F(SleepGuardTest, ClockThatIsSetBackDoesNotKeepItAwake) {
  Start();
  Play(u"a");
  clock.whole_seconds -= 3600;
  Reach(PlaybackState::kNoDevice);
  EXPECT_FALSE(Awake());
}

}  // namespace
}  // namespace app
