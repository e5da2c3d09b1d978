#include "platform/front/running_procedures.h"

#include <gtest/gtest.h>

namespace platform::front {
namespace {

class RunningProceduresTest : public ::testing::Test {
 protected:
  struct Pointer final : BusyPointer {
    void Show() override { busy = true; }
    void Hide() override { busy = false; }
    bool busy = false;
  };

  static constexpr std::chrono::milliseconds kLonger = RunningProcedures::kPatience * 2;
  using Scope = RunningProcedures::Scope;

  Pointer pointer_;
  RunningProcedures::Clock::time_point now_;
  RunningProcedures running_{pointer_, [this] { return now_; }};
};

TEST_F(RunningProceduresTest, PointerIsBusyOnceTheUserHasWaitedForAWhile) {
  {
    const Scope scope(running_, Pumping::kIsWaiting);
    running_.Pumps();
    now_ += RunningProcedures::kPatience;
    running_.Pumps();
    EXPECT_FALSE(pointer_.busy);
    now_ += std::chrono::milliseconds(1);
    running_.Pumps();
    EXPECT_TRUE(pointer_.busy);
  }
  EXPECT_FALSE(pointer_.busy);
}

TEST_F(RunningProceduresTest, WorkThatProcessesMessagesHoldsUpNobodyButAWaitThatPaintsDoes) {
  const Scope scope(running_, Pumping::kIsWork);
  running_.Pumps();
  now_ += kLonger;
  running_.Pumps();
  EXPECT_FALSE(pointer_.busy);
  running_.Waits();
  now_ += kLonger;
  running_.Waits();
  EXPECT_TRUE(pointer_.busy);
  running_.Pumps();
  EXPECT_FALSE(pointer_.busy) << "it works again";
}

TEST_F(RunningProceduresTest, OuterProcedureThatStillWaitsKeepsThePointerBusy) {
  const Scope outer(running_, Pumping::kIsWaiting);
  running_.Pumps();
  now_ += kLonger;
  {
    const Scope inner(running_, Pumping::kIsWork);
    running_.Pumps();
    EXPECT_TRUE(pointer_.busy);
  }
  EXPECT_TRUE(pointer_.busy);
}

TEST_F(RunningProceduresTest, DialogStartsTheWaitAnew) {
  const Scope scope(running_, Pumping::kIsWaiting);
  running_.Pumps();
  now_ += kLonger;
  running_.Pumps();
  running_.Rests();
  EXPECT_FALSE(pointer_.busy);
  running_.Pumps();
  EXPECT_FALSE(pointer_.busy);
}

TEST_F(RunningProceduresTest, OutsideOfAllProceduresNothingWaits) {
  running_.Pumps();
  now_ += kLonger;
  running_.Waits();
  running_.EscapePressed();
  EXPECT_FALSE(pointer_.busy);
  EXPECT_FALSE(running_.EscapePressedInside());
}

TEST_F(RunningProceduresTest, EscapeCountsForTheProceduresThatHaveBegun) {
  const Scope outer(running_, Pumping::kIsWaiting);
  running_.EscapePressed();
  EXPECT_TRUE(running_.EscapePressedInside());
  {
    const Scope inner(running_, Pumping::kIsWaiting);
    EXPECT_FALSE(running_.EscapePressedInside()) << "an earlier one was meant for something else";
  }
  EXPECT_TRUE(running_.EscapePressedInside());
}

}  // namespace
}  // namespace platform::front
