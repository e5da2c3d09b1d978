// The mark at the latest peak, and the zones of a level.
#include "platform/qt/peak_bar.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QThread>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// How often levels come.
constexpr int kLevelMilliseconds = 20;

class PeakBarTest : public ::testing::Test {
 protected:
  PeakBarTest() {
    window_.resize(100, 300);
    bar_.setGeometry(10, 10, 10, 202);
    window_.show();
  }
  void SetUp() override { ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_)); }

  QColor At(int height) { return bar_.grab().toImage().pixelColor(5, bar_.height() - 1 - height); }

  QWidget window_;
  PeakBar bar_{&window_};
};

TEST_F(PeakBarTest, LevelIsGreenThenYellowThenRed) {
  bar_.SetLevel(1.0);
  EXPECT_GT(At(50).green(), At(50).red());
  EXPECT_NEAR(At(160).red(), At(160).green(), 70);
  EXPECT_GT(At(160).red(), At(160).blue() + 100);
  EXPECT_GT(At(190).red(), At(190).green() + 100);
}

TEST_F(PeakBarTest, MarkStaysAtThePeakWhenTheLevelFalls) {
  bar_.SetLevel(0.8);
  ASSERT_TRUE(WaitFor([&] { return bar_.MarkHeight() == 160; }));
  bar_.SetLevel(0.2);
  ASSERT_TRUE(WaitFor([&] { return bar_.Paints() >= 2; }));
  EXPECT_EQ(bar_.LevelHeight(), 40);
  EXPECT_EQ(bar_.MarkHeight(), 160);
  const QColor empty = bar_.palette().color(QPalette::Base);
  EXPECT_NE(At(160), empty);
  EXPECT_EQ(At(150), empty);
  EXPECT_EQ(At(170), empty);
}

TEST_F(PeakBarTest, MarkFallsSlowlyThoughNoFurtherLevelComesAndThenNothingWakesTheBar) {
  bar_.SetLevel(0.3);
  ASSERT_TRUE(WaitFor([&] { return bar_.MarkHeight() == 60; }));
  QElapsedTimer clock;
  clock.start();
  bar_.SetLevel(0.1);
  int seen = 0;
  int last = 60;
  ASSERT_TRUE(WaitFor([&] {
    if (bar_.MarkHeight() < last) ++seen;
    last = bar_.MarkHeight();
    return last == 20;
  }));
  EXPECT_GT(clock.elapsed(), 1500) << "it rests for a second first";
  EXPECT_GT(seen, 3) << "it does not jump";
  EXPECT_FALSE(bar_.Wakes());
}

TEST_F(PeakBarTest, BarsArePaintedTogetherThoughTheirLevelsBeganApart) {
  PeakBar other(&window_);
  other.setGeometry(30, 10, 10, 202);
  other.show();
  ASSERT_TRUE(WaitFor([&] { return bar_.Paints() > 0 && other.Paints() > 0; }));
  constexpr int kLevels = 60;
  int together = 0;
  int alone = 0;
  for (int level = 0; level < kLevels; ++level) {
    const int before = bar_.Paints();
    const int others_before = other.Paints();
    bar_.SetLevel(level % 2 == 0 ? 0.2 : 0.4);
    // In the middle of the first one's rest.
    if (level > 0) other.SetLevel(level % 2 == 0 ? 0.3 : 0.5);
    QCoreApplication::processEvents();
    const bool first = bar_.Paints() > before;
    const bool second = other.Paints() > others_before;
    if (first && second) ++together;
    if (first != second) ++alone;
    QThread::msleep(kLevelMilliseconds);
  }
  EXPECT_GT(together, kLevels / 6);
  EXPECT_LT(alone, together / 2);
}

TEST_F(PeakBarTest, HigherLevelTakesTheMarkAlong) {
  bar_.SetLevel(0.5);
  ASSERT_TRUE(WaitFor([&] { return bar_.MarkHeight() == 100; }));
  bar_.SetLevel(0.6);
  EXPECT_TRUE(WaitFor([&] { return bar_.MarkHeight() == 120; }));
}

TEST_F(PeakBarTest, HiddenBarHasNoMarkAndNoTimer) {
  bar_.SetLevel(0.8);
  ASSERT_TRUE(WaitFor([&] { return bar_.MarkHeight() == 160; }));
  bar_.SetLevel(0.1);
  ASSERT_TRUE(WaitFor([&] { return bar_.Wakes() && bar_.LevelHeight() == 20; }));
  bar_.hide();
  EXPECT_FALSE(bar_.Wakes());
  EXPECT_EQ(bar_.MarkHeight(), bar_.LevelHeight());
  bar_.SetLevel(0.9);
  bar_.SetLevel(0.0);
  EXPECT_FALSE(bar_.Wakes());
  bar_.show();
  EXPECT_EQ(bar_.MarkHeight(), 0) << "what nobody saw leaves no mark";
}

TEST_F(PeakBarTest, MarkPaintsOnlyItselfAndWhereItWas) {
  bar_.SetLevel(0.8);
  ASSERT_TRUE(WaitFor([&] { return bar_.MarkHeight() == 160; }));
  bar_.SetLevel(0.1);
  ASSERT_TRUE(WaitFor([&] { return bar_.MarkHeight() < 160; })) << "what came before is painted by now";

  class Largest final : public QObject {
   public:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Paint) {
        height = std::max(height, static_cast<QPaintEvent*>(event)->rect().height());
      }
      return false;
    }
    int height = 0;
  } largest;
  const int before = bar_.Paints();
  bar_.installEventFilter(&largest);
  ASSERT_TRUE(WaitFor([&] { return bar_.MarkHeight() < 140 && bar_.Paints() > before; }));
  EXPECT_LT(largest.height, 60) << "not the whole bar";
}

}  // namespace
}  // namespace platform::qt
