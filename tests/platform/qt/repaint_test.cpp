// What the window paints while a station plays: the bars that moved, and nothing at all when nobody sees it.
#include <gtest/gtest.h>

#include <QEvent>
#include <map>

#include "platform/qt/peak_bar.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// Counts the paint events of every widget.
class PaintCounter final : public QObject {
 public:
  PaintCounter() { qApp->installEventFilter(this); }
  [[nodiscard]] int Of(const QWidget& widget) const {
    const auto found = counts_.find(&widget);
    return found == counts_.end() ? 0 : found->second;
  }
  [[nodiscard]] int All() const {
    int all = 0;
    for (const auto& [widget, count] : counts_) all += count;
    return all;
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++counts_[watched];
    return false;
  }

 private:
  std::map<const QObject*, int> counts_;
};

/// A window that plays: timers run, every tick of the fast one gives the bars other values.
class Repaint : public ::testing::Test {
 protected:
  Repaint() {
    opened_ = fixture_.Open();
    for (controls::ProgressBar& bar : form_.ProgressBar1) bar.SetVisible(true);
    form_.Frame3.SetVisible(true);
    moves_ = form_.Timer1.Ticked.Subscribe([this] {
      ++ticks_;
      for (controls::ProgressBar& bar : form_.ProgressBar1) bar.SetValue(ticks_ % 2 == 0 ? 2000 : 8000);
    });
    counts_ = form_.tmPlay.Ticked.Subscribe([this] {
      form_.Label1.SetCaption(u"Pos: " + FromQt(QString::number(ticks_)));
      form_.Label4.SetCaption(u"Titel " + FromQt(QString::number(ticks_)));
    });
    form_.tmPlay.SetInterval(10);
    form_.Timer1.SetInterval(5);
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  void Play() {
    form_.tmPlay.SetEnabled(true);
    form_.Timer1.SetEnabled(true);
  }
  bool WaitForTicks(int count) {
    return WaitFor([this, until = ticks_ + count] { return ticks_ >= until; });
  }
  /// Lets everything be painted that waits for it.
  static void Settle() {
    for (int round = 0; round < 5; ++round) QTest::qWait(10);
  }

  WindowFixture fixture_;
  app::Form1& form_ = fixture_.form;
  PeakBar& bar_ = fixture_.Find<PeakBar>("ProgressBar1_0");
  int ticks_ = 0;

 private:
  controls::Subscription moves_;
  controls::Subscription counts_;
  bool opened_ = false;
};

TEST_F(Repaint, VisibleWindowPaintsItsBarsAndTexts) {
  const PaintCounter paints;
  Play();
  ASSERT_TRUE(WaitForTicks(20));
  EXPECT_GT(paints.Of(bar_), 0);
  EXPECT_GT(paints.Of(fixture_.Find("Label1")), 0);
}

TEST_F(Repaint, HiddenWindowPaintsNothingWhilePeaksAndTimersRun) {
  fixture_.window->hide();
  Settle();
  const PaintCounter paints;
  Play();
  ASSERT_TRUE(WaitForTicks(20));
  Settle();
  EXPECT_EQ(paints.All(), 0);
}

TEST_F(Repaint, MinimisedWindowPaintsNothingWhilePeaksAndTimersRunAndEverythingWhenItIsBack) {
  fixture_.window->showMinimized();
  Settle();
  ASSERT_TRUE(fixture_.window->isMinimized());
  const PaintCounter paints;
  Play();
  ASSERT_TRUE(WaitForTicks(20));
  Settle();
  EXPECT_EQ(paints.All(), 0);
  fixture_.window->showNormal();
  EXPECT_TRUE(WaitFor([&] { return paints.Of(bar_) > 0; }));
  EXPECT_GT(paints.Of(fixture_.Find("Label1")), 0);
}

TEST_F(Repaint, BarPaintsOnceForEachValueThatChangesItsHeightAndNothingElsePaintsWithIt) {
  Settle();
  const PaintCounter paints;
  form_.ProgressBar1[0].SetValue(5000);
  ASSERT_TRUE(WaitFor([&] { return paints.Of(bar_) > 0; }));
  Settle();
  EXPECT_EQ(paints.Of(bar_), 1);
  EXPECT_EQ(paints.All(), 1) << "nothing below the bar is painted with it";
}

TEST_F(Repaint, LastOfSeveralQuickValuesIsPaintedThoughNoFurtherOneComes) {
  Settle();
  const PaintCounter paints;
  form_.ProgressBar1[0].SetValue(5000);
  ASSERT_TRUE(WaitFor([&] { return paints.Of(bar_) == 1; }));
  for (const int value : {3000, 7000, 2000}) form_.ProgressBar1[0].SetValue(value);
  ASSERT_TRUE(WaitFor([&] { return paints.Of(bar_) == 2; }));
  Settle();
  EXPECT_EQ(paints.Of(bar_), 2) << "the values before it are not painted";
}

TEST_F(Repaint, BarDoesNotPaintForAValueThatChangesNoPixel) {
  form_.ProgressBar1[0].SetValue(5000);
  Settle();
  const int height = bar_.LevelHeight();
  const PaintCounter paints;
  form_.ProgressBar1[0].SetValue(5001);
  form_.ProgressBar1[0].SetValue(5002);
  Settle();
  ASSERT_EQ(bar_.LevelHeight(), height);
  EXPECT_EQ(paints.All(), 0);
}

TEST_F(Repaint, SameTextAgainIsNotPaintedAgain) {
  form_.Label1.SetCaption(u"Pos: 00:00:01");
  Settle();
  const PaintCounter paints;
  form_.Label1.SetCaption(u"Pos: 00:00:01");
  Settle();
  EXPECT_EQ(paints.All(), 0);
}

}  // namespace
}  // namespace platform::qt
