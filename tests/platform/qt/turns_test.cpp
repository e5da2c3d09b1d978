#include "platform/qt/turns.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <memory>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class TurnsTest : public ::testing::Test {
 protected:
  TurnsTest() { turns_.SetMainWindow(window_.get()); }
  void HandOver(TurnOnWait on_wait, TurnWhenBlocked when_blocked = TurnWhenBlocked::kIsDropped) {
    turns_.HandOver([this] { ++runs_; }, on_wait, when_blocked);
  }

  QtMessageLoop loop_;
  QtTurns turns_{loop_};
  std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
  int runs_ = 0;
};

TEST_F(TurnsTest, WishRunsFromTheEventLoopAndNotInAWaitThatPaints) {
  HandOver(TurnOnWait::kWaits);
  EXPECT_EQ(runs_, 0);
  loop_.ProcessPaintMessages();
  EXPECT_EQ(runs_, 0);
  Settle();
  EXPECT_EQ(runs_, 1);
}

TEST_F(TurnsTest, OnlyAWishThatEndsWaitsEndsAWait) {
  HandOver(TurnOnWait::kWaits);
  EXPECT_FALSE(loop_.InputEndsWait());
  HandOver(TurnOnWait::kEndsWait);
  EXPECT_TRUE(loop_.InputEndsWait());
  Settle();
  EXPECT_FALSE(loop_.InputEndsWait());
}

TEST_F(TurnsTest, DialogDropsWhatMayBeDropped) {
  QDialog dialog(window_.get());
  dialog.setModal(true);
  dialog.show();
  HandOver(TurnOnWait::kWaits);
  Settle();
  EXPECT_EQ(runs_, 0);
  HandOver(TurnOnWait::kWaits, TurnWhenBlocked::kRuns);
  Settle();
  EXPECT_EQ(runs_, 1);
  dialog.close();
  Settle();
  EXPECT_EQ(runs_, 1) << "what was dropped does not come back";
}

TEST_F(TurnsTest, NothingRunsForAWindowThatIsGone) {
  HandOver(TurnOnWait::kWaits);
  window_.reset();
  HandOver(TurnOnWait::kWaits);
  Settle();
  EXPECT_EQ(runs_, 0);
}

}  // namespace
}  // namespace platform::qt
