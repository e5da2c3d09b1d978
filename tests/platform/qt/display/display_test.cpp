// The window on a display of its own, with mouse and keyboard operated from outside the program.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QScreen>
#include <QTimer>

#include "platform/qt/dialogs.h"
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

/// A wait that only paints, with the mouse and keyboard operated from outside.
class DisplayWait : public Display {
 protected:
  DisplayWait() {
    for (const char16_t* name : {u"Radio A", u"Radio B", u"Radio C"}) {
      controls::ListRow row;
      row.cells.Set(0, name);
      list_.AddRow(std::move(row));
    }
    list_.Select(list_.RowAt(0));
  }
  QPoint At(int row) const {
    return view_.viewport()->mapToGlobal(view_.visualRect(view_.model()->index(row, 0)).center());
  }
  static void Click(const QPoint& place, const char* button = "1") {
    Work({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", button});
  }
  static constexpr int kLong = 20'000;  ///< milliseconds, also on a busy machine

  /// Whether `input` ends the wait within `limit` milliseconds.
  bool EndsWait(const std::function<void()>& input, int limit = kLong) {
    bool ended = false;
    fixture_.loop.HandOver(context_, [&] {
      input();
      QElapsedTimer clock;
      clock.start();
      while (!ended && clock.elapsed() < limit) {
        fixture_.loop.ProcessPaintMessages();
        ended = fixture_.loop.InputEndsWait();
      }
    });
    fixture_.loop.ProcessPendingMessages();
    return ended;
  }

  controls::ListView& list_ = fixture_.form.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");
  QObject context_;
};

TEST_F(DisplayWait, EndsForStopAndThenStops) {
  const Counter stops(fixture_.form.Command6.Clicked);
  EXPECT_TRUE(EndsWait([&] { ClickOn(fixture_.Find("Command6")); }));
  EXPECT_TRUE(WaitFor([&] { return stops.Count() == 1; }));
}

TEST_F(DisplayWait, EndsForAnotherRowByMouseAndKeyAndThenSelectsIt) {
  EXPECT_TRUE(EndsWait([&] { Click(At(1)); }));
  EXPECT_TRUE(WaitFor([&] { return list_.SelectedRow() == list_.RowAt(1); }));
  EXPECT_TRUE(EndsWait([&] { Work({"key", "Down"}); }));
  EXPECT_TRUE(WaitFor([&] { return list_.SelectedRow() == list_.RowAt(2); }));
}

TEST_F(DisplayWait, EndsForEscape) {
  EXPECT_TRUE(EndsWait([] { Work({"key", "Escape"}); }));
  EXPECT_NE(fixture_.loop.GetAsyncKeyState(kVkEscape), 0);
}

TEST_F(DisplayWait, EndsForADoubleClickWhichStartsItsRowOnce) {
  std::vector<controls::RowId> started;
  const auto starts = list_.DoubleClicked.Subscribe([&](controls::RowId row) { started.push_back(row); });
  const QPoint place = At(2);
  EXPECT_TRUE(EndsWait([&] {
    Work({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "--repeat", "2",
          "--delay", "50", "1"});
  }));
  EXPECT_TRUE(WaitFor([&] { return !started.empty(); }));
  EXPECT_EQ(started, std::vector<controls::RowId>{list_.RowAt(2)});
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(2));
}

TEST_F(DisplayWait, ContinuesForTheVolumeAndForTyping) {
  constexpr int kASecond = 1000;
  const auto input = [&] {
    fixture_.Find("hscSavVolume").setFocus();
    Work({"key", "Left"});
    fixture_.Find("TextBox1_0").setFocus();
    Work({"type", "neu"});
  };
  EXPECT_FALSE(EndsWait(input, kASecond));
  EXPECT_TRUE(WaitFor([&] { return fixture_.form.TextBox1[0].GetText() == u"neu"; }));
}

TEST_F(DisplayWait, MenuThatOpensAndGoesInTheWaitOfASelectionHarmsNothing) {
  const auto slow = list_.SelectionChanged.Subscribe([&] {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 300) fixture_.loop.ProcessPendingMessages();
  });
  const auto menu_is_open = [this] { return view_.findChild<QWidget*>("list_menu") != nullptr; };
  for (int round = 0; round < 3; ++round) {
    for (const int row : {1, 2}) {
      Click(At(row), "3");
      EXPECT_TRUE(WaitFor(menu_is_open));
      Work({"key", "Escape"});
      EXPECT_TRUE(WaitFor([&] {
        return !menu_is_open() && list_.SelectedRow() == list_.RowAt(static_cast<std::size_t>(row));
      }));
    }
  }
}

TEST_F(DisplayWait, MessageBoxThatOpensOverAMenuTakesTheKeyboard) {
  QtDialogs dialogs(fixture_.paths);
  dialogs.SetMainWindow(fixture_.window.get());
  Click(At(1), "3");
  ASSERT_TRUE(WaitFor([this] { return view_.findChild<QWidget*>("list_menu") != nullptr; }));
  // A key that comes earlier goes to the window below, which takes no more input.
  QTimer once_active;
  QObject::connect(&once_active, &QTimer::timeout, [&once_active] {
    const QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr || !box->isActiveWindow()) return;
    once_active.stop();
    Work({"key", "Return"});
  });
  once_active.start(10);
  bool is_deaf = false;
  QTimer deadline;
  QObject::connect(&deadline, &QTimer::timeout, [&is_deaf] {
    QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr) return;
    is_deaf = true;
    box->close();
  });
  deadline.start(kLong);
  dialogs.MessageBoxW(u"Text", u"", kMbIconInformation);
  EXPECT_FALSE(is_deaf);
  EXPECT_TRUE(WaitFor([this] { return view_.findChild<QWidget*>("list_menu") == nullptr; }));
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
