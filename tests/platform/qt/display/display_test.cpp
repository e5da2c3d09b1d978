// The window on a display of its own, with mouse and keyboard worked from outside the program.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QScreen>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class Display : public ::testing::Test {
 protected:
  void SetUp() override {
    fixture_.window->Open();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(fixture_.window.get()));
    // Without a window manager nobody gives the window the keyboard.
    Work({"windowfocus", "--sync", QString::number(fixture_.window->winId())});
    ASSERT_TRUE(WaitFor([this] { return fixture_.window->isActiveWindow(); }));
  }

  /// One order to the display's mouse or keyboard; when this returns, the display has taken it.
  static void Work(const QStringList& order) {
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), order);
    ASSERT_TRUE(tool.waitForFinished(10000));
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
  }
  static void ClickOn(const QWidget& widget) {
    const QPoint place = widget.mapToGlobal(widget.rect().center());
    Work({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
  }

  WindowFixture fixture_;
};

TEST_F(Display, ClickFromOutsideReachesTheControl) {
  const Counter clicks(fixture_.form.Command1.Clicked);
  ClickOn(fixture_.Find("Command1"));
  EXPECT_TRUE(WaitFor([&] { return clicks.Count() == 1; }));
}

TEST_F(Display, PaintingOnlyKeepsInputForLater) {
  const Counter clicks(fixture_.form.Command1.Clicked);
  ClickOn(fixture_.Find("Command1"));
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < 300) fixture_.loop.ProcessPaintMessages();
  EXPECT_EQ(clicks.Count(), 0);
  EXPECT_TRUE(WaitFor([&] {
    fixture_.loop.ProcessPendingMessages();
    return clicks.Count() == 1;
  }));
}

TEST_F(Display, EscapeIsSeenDownAndUp) {
  Work({"keydown", "Escape"});
  EXPECT_TRUE(WaitFor([this] { return fixture_.loop.GetAsyncKeyState(kVkEscape) < 0; }));
  Work({"keyup", "Escape"});
  EXPECT_TRUE(WaitFor([this] { return fixture_.loop.GetAsyncKeyState(kVkEscape) == 0; }));
}

TEST_F(Display, MenuKeyIsTheSecondaryAction) {
  const Counter clicks(fixture_.form.Command3.ContextClicked);
  fixture_.Find("Command3").setFocus();
  Work({"key", "Menu"});
  EXPECT_TRUE(WaitFor([&] { return clicks.Count() == 1; }));
}

TEST_F(Display, RightClickIsTheSecondaryAction) {
  const Counter clicks(fixture_.form.Command3.ContextClicked);
  const QWidget& button = fixture_.Find("Command3");
  const QPoint place = button.mapToGlobal(button.rect().center());
  Work({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "3"});
  EXPECT_TRUE(WaitFor([&] { return clicks.Count() == 1; }));
}

TEST_F(Display, WindowFitsASmallScreen) {
  const QRect screen = QApplication::primaryScreen()->availableGeometry();
  EXPECT_LE(fixture_.window->frameGeometry().width(), screen.width());
  EXPECT_LE(fixture_.window->frameGeometry().height(), screen.height());
}

}  // namespace
}  // namespace platform::qt
