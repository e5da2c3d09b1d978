#include "platform/live/reconnect_schedule.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace live_test {
namespace {

using namespace std::chrono_literals;
using platform::PlaybackFailure;
using platform::live::ReconnectSchedule;
using Failure = ReconnectSchedule::Failure;
using Time = ReconnectSchedule::Clock::time_point;

const Time kStart = Time(1h);

/// The seconds after the loss at which attempts fall due when every one fails at once.
std::vector<std::int64_t> Attempts(ReconnectSchedule& schedule, std::size_t count) {
  std::vector<std::int64_t> seconds;
  while (seconds.size() < count) {
    const Time due = schedule.NextAttempt();
    seconds.push_back(std::chrono::duration_cast<std::chrono::seconds>(due - kStart).count());
    schedule.AttemptStarted(due);
  }
  return seconds;
}

TEST(ReconnectScheduleTest, TriesAtOnceThenEverySecondForAMinute) {
  ReconnectSchedule schedule;
  schedule.AttemptStarted(kStart - 100s);
  schedule.Lose(kStart, kStart - 99s);
  const auto seconds = Attempts(schedule, 61);
  for (std::size_t at = 0; at < seconds.size(); ++at) EXPECT_EQ(seconds[at], static_cast<long>(at));
}

TEST(ReconnectScheduleTest, ThenEverMoreRarelyUpToEveryThirtySeconds) {
  ReconnectSchedule schedule;
  schedule.AttemptStarted(kStart - 100s);
  schedule.Lose(kStart, kStart - 99s);
  auto seconds = Attempts(schedule, 70);
  seconds.erase(seconds.begin(), seconds.begin() + 60);
  EXPECT_EQ(seconds, (std::vector<std::int64_t>{60, 62, 66, 74, 90, 120, 150, 180, 210, 240}));
}

TEST(ReconnectScheduleTest, AStreamThatBreaksSoonContinuesWithTheOldPause) {
  ReconnectSchedule schedule;
  schedule.AttemptStarted(kStart - 100s);
  schedule.Lose(kStart, kStart - 99s);
  schedule.AttemptStarted(kStart);
  schedule.Lose(kStart + 100ms, kStart + 50ms);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 1s);
}

TEST(ReconnectScheduleTest, AStreamThatWasNeverHeardIsNotTriedAgainAtOnce) {
  ReconnectSchedule schedule;
  schedule.AttemptStarted(kStart);
  schedule.Lose(kStart + 10ms, std::nullopt);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 1s);
  EXPECT_TRUE(schedule.Lost());
}

TEST(ReconnectScheduleTest, WhatCostsNobodyAnythingIsTriedAgainSoonWithinTheFirstMinute) {
  ReconnectSchedule schedule;
  schedule.AttemptStarted(kStart - 100s);
  schedule.Lose(kStart, kStart - 99s);
  schedule.AttemptStarted(kStart);
  schedule.AttemptFailed(kStart + 10ms, Failure::kCheap);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 260ms);
  schedule.AttemptStarted(kStart + 300ms);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 1300ms) << "a stream that opens and breaks is no cheap failure";
  schedule.AttemptFailed(kStart + 59999ms, Failure::kCheap);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 60249ms);
  schedule.AttemptStarted(kStart + 60249ms);
  schedule.AttemptFailed(kStart + 60250ms, Failure::kCheap);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 62249ms) << "the minute is over";
}

TEST(ReconnectScheduleTest, AServerThatRefusesIsAskedOnceASecond) {
  ReconnectSchedule schedule;
  schedule.AttemptStarted(kStart - 100s);
  schedule.Lose(kStart, kStart - 99s);
  schedule.AttemptStarted(kStart);
  schedule.AttemptFailed(kStart + 10ms, Failure::kRefusal);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 1s);
}

TEST(ReconnectScheduleTest, WithoutALossTheMinuteBeginsWithTheFirstFailure) {
  ReconnectSchedule schedule;
  schedule.Lose(kStart - 100s, std::nullopt);
  schedule.Reset();
  EXPECT_FALSE(schedule.Lost());
  EXPECT_LE(schedule.NextAttempt(), kStart);
  schedule.AttemptStarted(kStart);
  schedule.AttemptFailed(kStart, Failure::kRefusal);
  EXPECT_TRUE(schedule.Lost());
  schedule.AttemptStarted(kStart + 59s);
  schedule.AttemptFailed(kStart + 59s, Failure::kRefusal);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 60s);
  schedule.AttemptStarted(kStart + 60s);
  EXPECT_EQ(schedule.NextAttempt(), kStart + 62s);
}

TEST(ReconnectScheduleTest, AnAnswerWithoutSoundIsARefusalUnlessTheStationIsNotThereYet) {
  for (const auto failure :
       {PlaybackFailure::kUnknownHost, PlaybackFailure::kNoAnswer, PlaybackFailure::kRefused,
        PlaybackFailure::kHungUp, PlaybackFailure::kConnectionLost}) {
    EXPECT_EQ(ReconnectSchedule::Weigh(failure), Failure::kCheap) << static_cast<int>(failure);
  }
  for (const auto failure : {PlaybackFailure::kTooManyRedirects, PlaybackFailure::kWebPage,
                             PlaybackFailure::kNoDecoder, PlaybackFailure::kUnreadable}) {
    EXPECT_EQ(ReconnectSchedule::Weigh(failure), Failure::kRefusal) << static_cast<int>(failure);
  }
  EXPECT_EQ(ReconnectSchedule::Weigh(PlaybackFailure::kHttpStatus, 503), Failure::kRefusal);
  EXPECT_EQ(ReconnectSchedule::Weigh(PlaybackFailure::kHttpStatus, 404), Failure::kCheap);
}

TEST(ReconnectScheduleTest, AFailureIsKnownUntilAnAttemptIsOpened) {
  ReconnectSchedule schedule;
  schedule.Lose(kStart, kStart - 99s);
  EXPECT_FALSE(schedule.Failed());
  schedule.AttemptStarted(kStart);
  schedule.AttemptFailed(kStart, Failure::kCheap);
  EXPECT_TRUE(schedule.Failed());
  schedule.AttemptStarted(kStart + 1s);
  EXPECT_TRUE(schedule.Failed());
  schedule.AttemptOpened();
  EXPECT_FALSE(schedule.Failed());
}

TEST(ReconnectScheduleTest, SteadySoundEndsALoss) {
  ReconnectSchedule schedule;
  schedule.AttemptStarted(kStart - 500s);
  schedule.Lose(kStart - 400s, kStart - 450s);
  schedule.AttemptStarted(kStart - 300s);
  schedule.Lose(kStart, kStart - 290s);
  EXPECT_EQ(Attempts(schedule, 3), (std::vector<std::int64_t>{0, 1, 2}));
}

}  // namespace
}  // namespace live_test
