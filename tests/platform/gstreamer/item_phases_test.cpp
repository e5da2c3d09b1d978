#include "platform/gstreamer/item_phases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace gstreamer_test::item_phases {
namespace {

using platform::gstreamer::Action;
using platform::gstreamer::ItemEvent;
using platform::gstreamer::ItemKind;
using platform::gstreamer::kItemEvents;
using platform::gstreamer::kPhases;
using platform::gstreamer::kWithAttempt;
using platform::gstreamer::kWithHeard;
using platform::gstreamer::NextStep;
using platform::gstreamer::Phase;
using platform::gstreamer::Runs;
using platform::gstreamer::Step;
using platform::gstreamer::Wanted;
using platform::gstreamer::WantsAttempt;

using enum platform::gstreamer::Phase;
using enum platform::gstreamer::ItemEvent;
using enum platform::gstreamer::ItemKind;

constexpr std::optional<ItemKind> kBoth;

struct Case {
  const char* name;
  Phase from;
  ItemEvent event;
  std::optional<ItemKind> kind;  ///< nothing: both
  Phase next;
  Action action;
};

void PrintTo(const Case& one, std::ostream* out) { *out << one.name; }

const Case kCases[] = {
    {"ItemOpens", kOpening, kAttemptOpened, kBoth, kSounding, Action::kPromote},
    {"ItemCannotBeOpened", kOpening, kAttemptFailed, kBoth, kFailed, Action::kDropAttempt},
    {"ItemIsTriedWithoutADevice", kOpening, kNoDevice, kBoth, kOpening, Action::kOpenUnheard},
    {"OpeningIsStopped", kOpening, kStop, kBoth, kStopped, Action::kEnd},
    {"ServerHangsUp", kSounding, kSourceEnded, kLive, kBridging, Action::kNoteLoss},
    {"ConnectionBreaks", kSounding, kSourceBroken, kLive, kBridging, Action::kNoteLoss},
    {"BridgedItemIsOpenedAgain", kBridging, kAttemptDue, kBoth, kBridgingOpening, Action::kOpen},
    {"ReopenedItemWaitsForItsTurn", kBridgingOpening, kAttemptOpened, kBoth, kBridgingOpened,
     Action::kNothing},
    {"BridgedAttemptFails", kBridgingOpening, kAttemptFailed, kLive, kBridging, Action::kDropAttempt},
    {"AttemptBreaksBeforeItsTurn", kBridgingOpened, kAttemptFailed, kLive, kBridging, Action::kDropAttempt},
    {"BridgedAttemptOfAFileFails", kBridgingOpening, kAttemptFailed, kFile, kEnded, Action::kEnd},
    {"AttemptOfAFileBreaksBeforeItsTurn", kBridgingOpened, kAttemptFailed, kFile, kEnded, Action::kEnd},
    {"BridgedAttemptFindsNoDevice", kBridgingOpening, kNoDevice, kBoth, kBridging, Action::kDropAttempt},
    {"AttemptLosesItsDeviceBeforeItsTurn", kBridgingOpened, kNoDevice, kBoth, kBridging,
     Action::kDropAttempt},
    {"SoundHasNothingLeft", kSounding, kNothingLeft, kBoth, kSounding, Action::kAwaitSilence},
    {"BridgeHasNothingLeft", kBridging, kNothingLeft, kBoth, kBridging, Action::kAwaitSilence},
    {"BridgeHasNothingLeftWhileItOpens", kBridgingOpening, kNothingLeft, kBoth, kBridgingOpening,
     Action::kAwaitSilence},
    {"BridgeHasNothingLeftWhenItIsOpen", kBridgingOpened, kNothingLeft, kBoth, kBridgingOpened,
     Action::kAwaitSilence},
    {"StationIsHeardOut", kSounding, kHeardOut, kLive, kSilent, Action::kDropHeard},
    {"BridgeIsHeardOut", kBridging, kHeardOut, kLive, kSilent, Action::kDropHeard},
    {"BridgeIsHeardOutWhileItOpens", kBridgingOpening, kHeardOut, kLive, kReopening, Action::kDropHeard},
    {"BridgeIsHeardOutWhenItIsOpen", kBridgingOpened, kHeardOut, kLive, kSounding, Action::kChangeOver},
    {"FileIsHeardOut", kSounding, kHeardOut, kFile, kEnded, Action::kEnd},
    {"BridgeOfAFileIsHeardOut", kBridging, kHeardOut, kFile, kEnded, Action::kEnd},
    {"BridgeOfAFileIsHeardOutWhileItOpens", kBridgingOpening, kHeardOut, kFile, kEnded, Action::kEnd},
    {"BridgeOfAFileIsHeardOutWhenItIsOpen", kBridgingOpened, kHeardOut, kFile, kEnded, Action::kEnd},
    {"FileBreaksOff", kSounding, kSourceBroken, kFile, kEnded, Action::kEnd},
    {"BridgeOfAFileBreaksOff", kBridging, kSourceBroken, kFile, kEnded, Action::kEnd},
    {"BridgeOfAFileBreaksOffWhileItOpens", kBridgingOpening, kSourceBroken, kFile, kEnded, Action::kEnd},
    {"BridgeOfAFileBreaksOffWhenItIsOpen", kBridgingOpened, kSourceBroken, kFile, kEnded, Action::kEnd},
    {"SilentItemIsOpenedAgain", kSilent, kAttemptDue, kBoth, kReopening, Action::kOpen},
    {"ItemIsBack", kReopening, kAttemptOpened, kBoth, kSounding, Action::kPromote},
    {"StationIsStillAway", kReopening, kAttemptFailed, kLive, kSilent, Action::kDropAttempt},
    {"FileHasGoneMeanwhile", kReopening, kAttemptFailed, kFile, kEnded, Action::kEnd},
    {"AttemptFindsNoDevice", kReopening, kNoDevice, kBoth, kSilent, Action::kDropAttempt},
    {"DeviceGoes", kSounding, kDeviceGone, kBoth, kSilent, Action::kDropBoth},
    {"DeviceGoesInABridge", kBridging, kDeviceGone, kBoth, kSilent, Action::kDropBoth},
    {"DeviceGoesWhileItOpens", kBridgingOpening, kDeviceGone, kBoth, kSilent, Action::kDropBoth},
    {"DeviceGoesWhenItIsOpen", kBridgingOpened, kDeviceGone, kBoth, kSilent, Action::kDropBoth},
    {"DeviceGoesInSilence", kSilent, kDeviceGone, kBoth, kSilent, Action::kDropBoth},
    {"DeviceGoesBeforeTheItemIsBack", kReopening, kDeviceGone, kBoth, kSilent, Action::kDropBoth},
    {"SoundIsStopped", kSounding, kStop, kBoth, kStopped, Action::kEnd},
    {"BridgeIsStopped", kBridging, kStop, kBoth, kStopped, Action::kEnd},
    {"BridgeIsStoppedWhileItOpens", kBridgingOpening, kStop, kBoth, kStopped, Action::kEnd},
    {"BridgeIsStoppedWhenItIsOpen", kBridgingOpened, kStop, kBoth, kStopped, Action::kEnd},
    {"SilenceIsStopped", kSilent, kStop, kBoth, kStopped, Action::kEnd},
    {"ReopeningIsStopped", kReopening, kStop, kBoth, kStopped, Action::kEnd},
    {"StoppedItemIsStarted", kStopped, kStart, kBoth, kSilent, Action::kNothing},
    {"EndedItemIsStarted", kEnded, kStart, kBoth, kSilent, Action::kNothing},
};

class ItemPhasesTest : public testing::TestWithParam<Case> {};

TEST_P(ItemPhasesTest, HasItsNextPhaseAndAction) {
  const Case& one = GetParam();
  for (const ItemKind kind : {kLive, kFile}) {
    if (one.kind.value_or(kind) != kind) continue;
    const Step step = NextStep(one.from, one.event, kind);
    EXPECT_EQ(step.next, one.next);
    EXPECT_EQ(step.action, one.action);
  }
}
INSTANTIATE_TEST_SUITE_P(Rows, ItemPhasesTest, testing::ValuesIn(kCases),
                         [](const auto& instance) { return instance.param.name; });

std::vector<std::tuple<Phase, ItemEvent, ItemKind>> Everything() {
  std::vector<std::tuple<Phase, ItemEvent, ItemKind>> all;
  for (int phase = 0; phase < kPhases; ++phase) {
    for (int event = 0; event < kItemEvents; ++event) {
      for (const ItemKind kind : {kLive, kFile}) {
        all.emplace_back(static_cast<Phase>(phase), static_cast<ItemEvent>(event), kind);
      }
    }
  }
  return all;
}

std::string Named(Phase phase, ItemEvent event, ItemKind kind) {
  return "phase " + std::to_string(static_cast<int>(phase)) + ", event " +
         std::to_string(static_cast<int>(event)) + (kind == kLive ? ", live" : ", file");
}

TEST(ItemPhasesOverallTest, WhatHasNoRowChangesNothing) {
  for (const auto& [phase, event, kind] : Everything()) {
    const auto is_it = [&, phase = phase, event = event, kind = kind](const Case& one) {
      return one.from == phase && one.event == event && one.kind.value_or(kind) == kind;
    };
    if (std::any_of(std::begin(kCases), std::end(kCases), is_it)) continue;
    const Step step = NextStep(phase, event, kind);
    EXPECT_EQ(step.next, phase) << Named(phase, event, kind);
    EXPECT_EQ(step.action, Action::kNothing) << Named(phase, event, kind);
  }
}

struct Pipelines {
  bool heard = false;
  bool attempt = false;
  friend bool operator==(const Pipelines&, const Pipelines&) = default;
};

Pipelines Of(Phase phase) { return {kWithHeard.Has(phase), kWithAttempt.Has(phase)}; }

Pipelines After(Action action, Pipelines before) {
  switch (action) {
    case Action::kOpen:
      EXPECT_FALSE(before.attempt) << "one attempt at a time";
      return {before.heard, true};
    case Action::kOpenUnheard:
      return {before.heard, true};
    case Action::kDropAttempt:
      return {before.heard, false};
    case Action::kPromote:
      EXPECT_FALSE(before.heard) << "it would be lost without being stopped";
      return {before.attempt, false};
    case Action::kDropHeard:
      return {false, before.attempt};
    case Action::kChangeOver:
      return {before.attempt, false};
    case Action::kDropBoth:
    case Action::kEnd:
      return {false, false};
    default:
      return before;
  }
}

TEST(ItemPhasesOverallTest, EachActionLeavesThePipelinesOfTheNextPhase) {
  for (const auto& [phase, event, kind] : Everything()) {
    const Step step = NextStep(phase, event, kind);
    EXPECT_EQ(After(step.action, Of(phase)), Of(step.next)) << Named(phase, event, kind);
  }
}

TEST(ItemPhasesOverallTest, StopClosesEverythingInEveryPhase) {
  for (int phase = 0; phase < kPhases; ++phase) {
    for (const ItemKind kind : {kLive, kFile}) {
      const Phase stopped = NextStep(static_cast<Phase>(phase), kStop, kind).next;
      EXPECT_EQ(Of(stopped), Pipelines()) << phase;
      EXPECT_FALSE(WantsAttempt(stopped, Wanted::kStopped)) << phase;
    }
  }
}

TEST(ItemPhasesOverallTest, OnlyWhatIsWantedAndNotOverRuns) {
  for (const Phase phase :
       {kOpening, kSounding, kBridging, kBridgingOpening, kBridgingOpened, kSilent, kReopening, kStopped}) {
    EXPECT_TRUE(Runs(phase, Wanted::kRunning));
    for (const Wanted wanted : {Wanted::kOpened, Wanted::kPaused, Wanted::kStopped, Wanted::kShutDown}) {
      EXPECT_FALSE(Runs(phase, wanted));
    }
  }
  EXPECT_FALSE(Runs(kEnded, Wanted::kRunning));
  EXPECT_FALSE(Runs(kFailed, Wanted::kRunning));
}

TEST(ItemPhasesOverallTest, AnAttemptIsWantedWhereNoneIsUnderWayAndTheSourceIsGone) {
  for (int phase = 0; phase < kPhases; ++phase) {
    const auto at = static_cast<Phase>(phase);
    EXPECT_EQ(WantsAttempt(at, Wanted::kRunning), at == kBridging || at == kSilent) << phase;
    EXPECT_FALSE(WantsAttempt(at, Wanted::kPaused)) << phase;
  }
}

}  // namespace
}  // namespace gstreamer_test::item_phases
