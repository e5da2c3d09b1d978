#include "platform/gstreamer/item_report.h"

#include <gtest/gtest.h>

#include <chrono>

namespace gstreamer_test::item_report {
namespace {

using namespace std::chrono_literals;
using platform::PlaybackFailure;
using platform::PlaybackState;
using platform::gstreamer::ItemReport;
using platform::gstreamer::Phase;
using platform::gstreamer::ReportOf;
using platform::gstreamer::Situation;
using platform::gstreamer::Wanted;

Situation Running(Phase phase) { return {.phase = phase, .wanted = Wanted::kRunning}; }

PlaybackState StateOf(const Situation& situation) { return ReportOf(situation).state; }

constexpr Phase kAfterALoss[] = {Phase::kBridging, Phase::kBridgingOpening, Phase::kBridgingOpened};
constexpr Phase kInSilence[] = {Phase::kSilent, Phase::kReopening};

TEST(ItemReportTest, UntilItIsStartedAnItemConnects) {
  EXPECT_EQ(StateOf({}), PlaybackState::kConnecting);
  EXPECT_EQ(StateOf(Running(Phase::kOpening)), PlaybackState::kConnecting);
  EXPECT_EQ(StateOf({.phase = Phase::kSounding}), PlaybackState::kConnecting);
  EXPECT_EQ(StateOf({.phase = Phase::kBridging, .is_lost = true}), PlaybackState::kConnecting);
}

TEST(ItemReportTest, SoundPlaysOrWaitsForItsBuffer) {
  Situation now = Running(Phase::kSounding);
  now.buffered_percent = 40;
  now.is_lost = true;
  now.attempt_failed = true;
  EXPECT_EQ(StateOf(now), PlaybackState::kBuffering) << "a loss that was made up for counts for nothing";
  EXPECT_EQ(ReportOf(now).buffered_percent, 40);
  now.plays = true;
  EXPECT_EQ(StateOf(now), PlaybackState::kPlaying);
}

TEST(ItemReportTest, WhatIsPausedIsPausedInEveryPhaseUntilItIsOver) {
  for (const Phase phase : {Phase::kSounding, Phase::kBridging, Phase::kSilent, Phase::kReopening}) {
    Situation now{.phase = phase, .wanted = Wanted::kPaused, .is_lost = true, .device_is_away = true};
    EXPECT_EQ(StateOf(now), PlaybackState::kPaused);
  }
  EXPECT_EQ(StateOf({.phase = Phase::kEnded, .wanted = Wanted::kPaused}), PlaybackState::kEnded);
}

TEST(ItemReportTest, ABridgedLossIsReportedOnceAnAttemptHasFailedOrTheSoundIsOver) {
  for (const Phase phase : kAfterALoss) {
    Situation now = Running(phase);
    now.is_lost = true;
    now.plays = true;
    now.cause = {PlaybackFailure::kConnectionLost};
    EXPECT_EQ(StateOf(now), PlaybackState::kPlaying);
    EXPECT_EQ(ReportOf(now).cause.failure, PlaybackFailure::kNone) << "known already, and no reason to worry";
    now.attempt_failed = true;
    EXPECT_EQ(StateOf(now), PlaybackState::kReconnecting);
    EXPECT_EQ(ReportOf(now).cause.failure, PlaybackFailure::kConnectionLost);
    now.attempt_failed = false;
    now.plays = false;
    EXPECT_EQ(StateOf(now), PlaybackState::kReconnecting);
  }
}

TEST(ItemReportTest, SilenceIsAMissingDeviceALossOrAStart) {
  for (const Phase phase : kInSilence) {
    Situation now = Running(phase);
    EXPECT_EQ(StateOf(now), PlaybackState::kConnecting);
    now.is_lost = true;
    EXPECT_EQ(StateOf(now), PlaybackState::kReconnecting);
    now.device_is_away = true;
    EXPECT_EQ(StateOf(now), PlaybackState::kNoDevice);
  }
}

TEST(ItemReportTest, TheTimeOfTheNextAttemptIsPassedOn) {
  Situation now = Running(Phase::kSilent);
  now.is_lost = true;
  EXPECT_EQ(ReportOf(now).next_try, std::nullopt);
  now.next_attempt = std::chrono::steady_clock::time_point(1h);
  EXPECT_EQ(ReportOf(now).next_try, now.next_attempt);
}

TEST(ItemReportTest, AnEndWithACauseIsAFailure) {
  EXPECT_EQ(StateOf(Running(Phase::kEnded)), PlaybackState::kEnded);
  for (const Phase phase : {Phase::kEnded, Phase::kFailed}) {
    Situation now = Running(phase);
    now.cause = {PlaybackFailure::kHttpStatus, 503};
    const ItemReport report = ReportOf(now);
    EXPECT_EQ(report.state, PlaybackState::kFailed);
    EXPECT_EQ(report.cause.http_status, 503);
  }
}

}  // namespace
}  // namespace gstreamer_test::item_report
