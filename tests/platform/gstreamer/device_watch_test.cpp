#include "platform/gstreamer/device_watch.h"

#include <gtest/gtest.h>

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::gstreamer::CardRule;
using platform::gstreamer::DeviceWatch;
using platform::gstreamer::Standstill;
using State = DeviceWatch::State;
using Time = DeviceWatch::Clock::time_point;

const Time kNoon = Time(1h);

TEST(DeviceWatchTest, AtFirstADeviceTakesTheSound) {
  const DeviceWatch watch;
  EXPECT_EQ(watch.Now(), State::kTaking);
  EXPECT_FALSE(watch.IsAway(kNoon));
  EXPECT_EQ(watch.CountsAsAwayAt(kNoon), std::nullopt);
}

TEST(DeviceWatchTest, ALostDeviceIsLookedForAtOnceAndThenOnceASecond) {
  DeviceWatch watch;
  watch.Lose(kNoon);
  EXPECT_EQ(watch.Now(), State::kLost);
  EXPECT_LE(watch.NextLook().value(), kNoon);
  watch.LookStarted(kNoon);
  EXPECT_EQ(watch.Now(), State::kLooking);
  watch.LookFailed();
  EXPECT_EQ(watch.Now(), State::kLost);
  EXPECT_EQ(watch.NextLook(), kNoon + 1s);
  watch.LookStarted(kNoon + 1s);
  watch.Found();
  EXPECT_EQ(watch.Now(), State::kTaking);
  watch.Lose(kNoon + 1100ms);
  EXPECT_EQ(watch.NextLook(), kNoon + 2s) << "however often it is lost";
}

TEST(DeviceWatchTest, ALossIsOnlyKnownAfterALookOrAWhile) {
  DeviceWatch watch;
  watch.Lose(kNoon);
  watch.LookStarted(kNoon);
  EXPECT_FALSE(watch.IsAway(kNoon + 499ms));
  EXPECT_EQ(watch.CountsAsAwayAt(kNoon + 499ms), kNoon + 500ms);
  EXPECT_EQ(watch.CountsAsAwayAt(kNoon + 500ms), std::nullopt) << "nobody is woken for what is past";
  EXPECT_TRUE(watch.IsAway(kNoon + 500ms)) << "though the look is still under way";
  watch.LookFailed();
  EXPECT_TRUE(watch.IsAway(kNoon + 10ms));
  watch.LookStarted(kNoon + 1s);
  EXPECT_TRUE(watch.IsAway(kNoon + 1s));
  EXPECT_EQ(watch.CountsAsAwayAt(kNoon), std::nullopt);
  watch.Found();
  EXPECT_FALSE(watch.IsAway(kNoon + 2s));
  watch.Lose(kNoon + 3s);
  EXPECT_FALSE(watch.IsAway(kNoon + 3s)) << "a new loss is judged by itself";
}

TEST(DeviceWatchTest, WhereNoDeviceCouldBeHadTheSoundIsAwayAtOnce) {
  DeviceWatch watch;
  watch.Miss(kNoon);
  EXPECT_EQ(watch.Now(), State::kLost);
  EXPECT_TRUE(watch.IsAway(kNoon));
  EXPECT_LE(watch.NextLook().value(), kNoon);
  watch.LookStarted(kNoon);
  watch.LookDropped();
  EXPECT_EQ(watch.Now(), State::kLost);
  EXPECT_TRUE(watch.IsAway(kNoon));
}

TEST(DeviceWatchTest, AFurtherFailureDoesNotDelayWhatIsKnown) {
  DeviceWatch watch;
  watch.Lose(kNoon);
  watch.Lose(kNoon + 400ms);
  EXPECT_TRUE(watch.IsAway(kNoon + 500ms));
  watch.LookStarted(kNoon + 500ms);
  watch.Lose(kNoon + 510ms);
  EXPECT_EQ(watch.Now(), State::kLooking);
}

TEST(StandstillTest, ADeviceThatTakesSoundContinues) {
  Standstill standstill;
  for (auto at = 0ms; at < 5s; at += 100ms) {
    EXPECT_EQ(standstill.NextCheck(kNoon + at), kNoon + at + 600ms);
    EXPECT_FALSE(standstill.Check(kNoon + at - 350ms, kNoon + at));
  }
}

TEST(StandstillTest, ADeviceIsGivenUpAfterASecondLook) {
  Standstill standstill;
  EXPECT_FALSE(standstill.Check(kNoon + 599ms, kNoon));
  EXPECT_EQ(standstill.NextCheck(kNoon), kNoon + 600ms);
  EXPECT_FALSE(standstill.Check(kNoon + 600ms, kNoon));
  EXPECT_EQ(standstill.NextCheck(kNoon), kNoon + 1100ms);
  EXPECT_FALSE(standstill.Check(kNoon + 1099ms, kNoon));
  EXPECT_TRUE(standstill.Check(kNoon + 1100ms, kNoon));
}

TEST(StandstillTest, AProgramThatWasDelayedItselfLooksTwice) {
  Standstill standstill;
  EXPECT_FALSE(standstill.Check(kNoon + 60s, kNoon));
  EXPECT_EQ(standstill.NextCheck(kNoon), kNoon + 60500ms);
  EXPECT_EQ(standstill.NextCheck(kNoon + 60100ms), kNoon + 60700ms) << "it has continued";
  EXPECT_FALSE(standstill.Check(kNoon + 60500ms, kNoon + 60100ms));
  EXPECT_FALSE(standstill.Check(kNoon + 60800ms, kNoon + 60100ms)) << "the suspicion starts again";
  EXPECT_TRUE(standstill.Check(kNoon + 61300ms, kNoon + 60100ms));
}

TEST(CardRuleTest, WithoutAServerTheCardIsTakenAtOnce) {
  CardRule rule;
  rule.ServerMissing(kNoon);
  EXPECT_TRUE(rule.MayTakeCard(kNoon));
}

TEST(CardRuleTest, AServerThatWasThereIsWaitedFor) {
  CardRule rule;
  rule.ServerAnswered();
  rule.ServerMissing(kNoon);
  EXPECT_FALSE(rule.MayTakeCard(kNoon));
  rule.ServerMissing(kNoon + 29s);
  EXPECT_FALSE(rule.MayTakeCard(kNoon + 29999ms));
  EXPECT_TRUE(rule.MayTakeCard(kNoon + 30s));
}

TEST(CardRuleTest, TheWaitBeginsAnewWithEveryAnswer) {
  CardRule rule;
  rule.ServerAnswered();
  rule.ServerMissing(kNoon);
  rule.ServerAnswered();
  rule.ServerMissing(kNoon + 20s);
  EXPECT_FALSE(rule.MayTakeCard(kNoon + 40s));
  EXPECT_TRUE(rule.MayTakeCard(kNoon + 50s));
}

}  // namespace
}  // namespace gstreamer_test
