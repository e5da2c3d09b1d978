#include "app/state/runs.h"

#include <gtest/gtest.h>

#include <optional>

namespace app {
namespace {

TEST(RunsTest, ARunIsWantedUntilANewerOneBegins) {
  const Life life;
  Runs runs(life);
  const Runs::Run first = runs.Begin();
  EXPECT_TRUE(first.Wanted());
  const Runs::Run second = runs.Begin();
  EXPECT_FALSE(first.Wanted());
  EXPECT_TRUE(second.Wanted());
}

TEST(RunsTest, AnInterruptedRunIsNotWantedAndTheNextOneIs) {
  const Life life;
  Runs runs(life);
  const Runs::Run interrupted = runs.Begin();
  runs.Interrupt();
  EXPECT_FALSE(interrupted.Wanted());
  EXPECT_TRUE(runs.Begin().Wanted());
}

TEST(RunsTest, WorkThatGoesWithTheNewestRunDoesNotOvertakeIt) {
  const Life life;
  Runs runs(life);
  const Runs::Run opening = runs.Begin();
  const Runs::Run beside = runs.Newest();
  EXPECT_TRUE(opening.Wanted());
  EXPECT_TRUE(beside.Wanted());
  runs.Begin();
  EXPECT_FALSE(beside.Wanted());
}

TEST(RunsTest, TheEndOfTheLifeEndsTheRunsOfAllAndThoseThatBeginLater) {
  Life life;
  Runs titles(life);
  Runs playing(life);
  const Runs::Run title = titles.Begin();
  const Runs::Run start = playing.Begin();
  life.End();
  EXPECT_TRUE(life.Ended());
  EXPECT_FALSE(title.Wanted());
  EXPECT_FALSE(start.Wanted());
  EXPECT_FALSE(titles.Begin().Wanted());
}

TEST(RunsTest, RunsOfDifferentWorkDoNotOvertakeEachOther) {
  const Life life;
  Runs titles(life);
  Runs playing(life);
  const Runs::Run title = titles.Begin();
  playing.Begin();
  playing.Interrupt();
  EXPECT_TRUE(title.Wanted());
}

TEST(RunsTest, ARunThatOutlivesItsObjectIsNotWanted) {
  const Life life;
  std::optional<Runs> runs(std::in_place, life);
  const Runs::Run run = runs->Begin();
  runs.reset();
  EXPECT_FALSE(run.Wanted());
}

TEST(RunsTest, ARunThatOutlivesItsLifeIsNotWanted) {
  std::optional<Life> life(std::in_place);
  Runs runs(*life);
  const Runs::Run run = runs.Begin();
  life.reset();
  EXPECT_FALSE(run.Wanted());
  EXPECT_FALSE(runs.Begin().Wanted());
}

}  // namespace
}  // namespace app
