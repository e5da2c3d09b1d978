#include "platform/qt/message_loop.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QPushButton>
#include <QSlider>
#include <QTimer>

#include "platform/qt/timer_binding.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

constexpr std::int16_t kDown = static_cast<std::int16_t>(0x8000);

class PaintedWidget final : public QPushButton {
 public:
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent* event) override {
    ++paints;
    QPushButton::paintEvent(event);
  }
};

class MessageLoopTest : public ::testing::Test {
 protected:
  void SetUp() override {
    widget_.show();
    widget_.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&widget_));
  }
  QtMessageLoop loop_;
  PaintedWidget widget_;
};

TEST_F(MessageLoopTest, PumpHandlesWhatIsPendingAndReturnsAtOnce) {
  int handled = 0;
  QMetaObject::invokeMethod(
      &widget_, [&] { ++handled; }, Qt::QueuedConnection);
  QElapsedTimer clock;
  clock.start();
  loop_.ProcessPendingMessages();
  loop_.ProcessPendingMessages();
  EXPECT_EQ(handled, 1);
  EXPECT_LT(clock.elapsed(), 5000);
}

TEST_F(MessageLoopTest, PaintingOnlyRepaints) {
  loop_.ProcessPendingMessages();
  const int before = widget_.paints;
  widget_.update();
  EXPECT_TRUE(WaitFor([&] {
    loop_.ProcessPaintMessages();
    return widget_.paints > before;
  }));
}

TEST_F(MessageLoopTest, PaintingOnlyFiresTimersThatAskForIt) {
  controls::Timer timer;
  const TimerBinding binding(timer, loop_);
  const Counter ticks(timer.Ticked);
  timer.SetTicksWhilePainting(true);
  timer.SetInterval(1);
  timer.SetEnabled(true);
  QElapsedTimer clock;
  clock.start();
  while (ticks.Count() == 0 && clock.elapsed() < 5000) loop_.ProcessPaintMessages();
  EXPECT_GT(ticks.Count(), 0);
}

TEST_F(MessageLoopTest, PaintingOnlyFiresNoTimers) {
  controls::Timer timer;
  const TimerBinding binding(timer, loop_);
  const Counter ticks(timer.Ticked);
  timer.SetInterval(1);
  timer.SetEnabled(true);
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < 50) loop_.ProcessPaintMessages();
  EXPECT_EQ(ticks.Count(), 0);
  EXPECT_TRUE(WaitFor([&] { return ticks.Count() > 0; }));
}

TEST_F(MessageLoopTest, PaintingOnlyDoesNotRepeatWhatIsHeldDown) {
  QSlider slider(Qt::Horizontal);
  slider.resize(400, 30);
  slider.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&slider));
  slider.setPageStep(1);
  QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(380, 15));
  const int before = slider.value();
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < 700) loop_.ProcessPaintMessages();
  EXPECT_EQ(slider.value(), before);
  EXPECT_TRUE(WaitFor([&] { return slider.value() > before; }));
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(380, 15));
}

TEST_F(MessageLoopTest, EscapeIsRememberedUntilAskedFor) {
  EXPECT_EQ(loop_.GetAsyncKeyState(kVkEscape), 0);
  QTest::keyClick(&widget_, Qt::Key_Escape);
  EXPECT_EQ(loop_.GetAsyncKeyState(kVkEscape), 1);
  EXPECT_EQ(loop_.GetAsyncKeyState(kVkEscape), 0);
}

// A run that ends at Escape asks for the key before each row. What was pressed while the program waited for
// the user, perhaps to leave a box minutes ago, must not end the run at its first row.
TEST_F(MessageLoopTest, EscapePressedWhileTheProgramRestedDoesNotCountForARunThatBeginsLater) {
  QTest::keyClick(&widget_, Qt::Key_Escape);
  std::int16_t at_the_first_row = -1;
  QTimer::singleShot(0, [&] {
    at_the_first_row = loop_.GetAsyncKeyState(kVkEscape);
    QCoreApplication::exit();
  });
  QApplication::exec();
  EXPECT_EQ(at_the_first_row, 0);
}

TEST_F(MessageLoopTest, EscapeHeldDownWhenTheRunBeginsCounts) {
  QTest::keyPress(&widget_, Qt::Key_Escape);
  std::int16_t at_the_first_row = 0;
  QTimer::singleShot(0, [&] {
    at_the_first_row = loop_.GetAsyncKeyState(kVkEscape);
    QCoreApplication::exit();
  });
  QApplication::exec();
  EXPECT_NE(at_the_first_row, 0);
  QTest::keyRelease(&widget_, Qt::Key_Escape);
}

TEST_F(MessageLoopTest, EscapePressedAndReleasedBetweenTwoRowsCounts) {
  std::int16_t at_the_next_row = 0;
  QTimer::singleShot(0, [&] {
    EXPECT_EQ(loop_.GetAsyncKeyState(kVkEscape), 0);
    QTimer::singleShot(0, &widget_, [this] { QTest::keyClick(&widget_, Qt::Key_Escape); });
    loop_.ProcessPendingMessages();
    at_the_next_row = loop_.GetAsyncKeyState(kVkEscape);
    QCoreApplication::exit();
  });
  QApplication::exec();
  EXPECT_NE(at_the_next_row, 0);
}

TEST_F(MessageLoopTest, EscapeHeldDownStaysDown) {
  QTest::keyPress(&widget_, Qt::Key_Escape);
  EXPECT_NE(loop_.GetAsyncKeyState(kVkEscape) & kDown, 0);
  EXPECT_NE(loop_.GetAsyncKeyState(kVkEscape) & kDown, 0);
  QTest::keyRelease(&widget_, Qt::Key_Escape);
  EXPECT_EQ(loop_.GetAsyncKeyState(kVkEscape), 0);
}

TEST_F(MessageLoopTest, OtherKeysAreNotEscape) {
  QTest::keyClick(&widget_, Qt::Key_A);
  EXPECT_EQ(loop_.GetAsyncKeyState(kVkEscape), 0);
  EXPECT_EQ(loop_.GetAsyncKeyState('A'), 0);
}

TEST_F(MessageLoopTest, SleepTakesItsTime) {
  QElapsedTimer clock;
  clock.start();
  loop_.Sleep(30);
  EXPECT_GE(clock.elapsed(), 29);
}

TEST_F(MessageLoopTest, PumpInsideAPaintingWaitIsAWholeOne) {
  int seen_inside = -1;
  QMetaObject::invokeMethod(
      &widget_,
      [&] {
        loop_.ProcessPendingMessages();
        seen_inside = loop_.PaintingOnly() ? 1 : 0;
      },
      Qt::QueuedConnection);
  loop_.ProcessPaintMessages();
  EXPECT_EQ(seen_inside, 1);  // after the inner processing the outer wait is as it was
  EXPECT_FALSE(loop_.PaintingOnly());
}

}  // namespace
}  // namespace platform::qt
