// What the user does while the window waits: what ends the wait, what comes after it, what the pointer shows.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QSlider>
#include <QTimer>
#include <csignal>

#include "platform/qt/close_requests.h"
#include "platform/qt/dialogs.h"
#include "platform/qt/timer_binding.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using controls::RowId;
using LongProcedures = QtMessageLoop::LongProcedures;

class Waiting : public ::testing::Test {
 protected:
  Waiting() {
    for (const char16_t* name : {u"Radio A", u"Radio B", u"Radio C"}) {
      controls::ListRow row;
      row.cells.Set(0, name);
      list_.AddRow(std::move(row));
    }
    list_.Select(list_.RowAt(0));
    opened_ = fixture_.Open();
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  QPoint At(int row) const { return view_.visualRect(view_.model()->index(row, 0)).center(); }
  void Press(const char* name, Qt::Key key) { QTest::keyClick(&fixture_.Find(name), key); }
  static void Later(const std::function<void()>& input) { QTimer::singleShot(0, qApp, input); }

  /// An event procedure that waits and only has the window painted, as the opening of an address does;
  /// `input` comes in the middle of the wait. Whether it ended the wait; otherwise three more rounds are
  /// waited.
  bool EndsWait(const std::function<void()>& input) {
    bool ended = false;
    loop_.HandOver(context_, [&] {
      EXPECT_FALSE(loop_.InputEndsWait()) << "before the input";
      bool came = false;
      Later([&] {
        input();
        came = true;
      });
      while (!came) loop_.ProcessPaintMessages();
      for (int round = 0; round < 3; ++round) loop_.ProcessPaintMessages();
      ended = loop_.InputEndsWait();
      EXPECT_EQ(loop_.InputEndsWait(), ended) << "asking changes nothing";
    });
    Settle();
    return ended;
  }

  WindowFixture fixture_;
  QtMessageLoop& loop_ = fixture_.loop;
  app::Form1& form_ = fixture_.form;
  controls::ListView& list_ = form_.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");
  QObject context_;

 private:
  bool opened_ = false;
};

TEST_F(Waiting, StopEndsItAndThenStops) {
  const Counter stops(form_.Command6.Clicked);
  EXPECT_TRUE(EndsWait([&] {
    QTest::mouseClick(&fixture_.Find("Command6"), Qt::LeftButton);
    EXPECT_EQ(stops.Count(), 0);
  }));
  EXPECT_EQ(stops.Count(), 1);
  EXPECT_TRUE(EndsWait([&] { Press("Command6", Qt::Key_Space); }));
  EXPECT_EQ(stops.Count(), 2);
}

TEST_F(Waiting, AnotherRowEndsItAndIsThenSelected) {
  EXPECT_TRUE(EndsWait([&] { QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, At(1)); }));
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(1));
  EXPECT_TRUE(EndsWait([&] { QTest::keyClick(&view_, Qt::Key_Down); }));
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(2));
}

TEST_F(Waiting, EnterAndAPressOnTheSelectedRowEndItAndStartAgain) {
  const Counter starts(list_.DoubleClicked);
  const Counter again(list_.SelectedRowClicked);
  EXPECT_TRUE(EndsWait([&] { QTest::keyClick(&view_, Qt::Key_Return); }));
  EXPECT_EQ(starts.Count(), 1);
  EXPECT_TRUE(EndsWait([&] { QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, At(0)); }));
  EXPECT_EQ(again.Count(), 1);
}

TEST_F(Waiting, HeldArrowEndsItWhenItComesToRest) {
  EXPECT_FALSE(EndsWait([&] {
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Down, {}, {}, true);
    QApplication::sendEvent(&view_, &repeated);
  }));
  EXPECT_TRUE(EndsWait([&] {
    QKeyEvent released(QEvent::KeyRelease, Qt::Key_Down, {});
    QApplication::sendEvent(&view_, &released);
  }));
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(1));
}

TEST_F(Waiting, ClosingEndsItAndThenCloses) {
  EXPECT_TRUE(EndsWait([&] {
    fixture_.window->close();
    EXPECT_FALSE(form_.form.Closing());
  }));
  EXPECT_TRUE(form_.form.IsClosed());
}

TEST_F(Waiting, SignalEndsItAndThenCloses) {
  const CloseRequests requests(form_.form, loop_);
  bool ended = false;
  loop_.HandOver(context_, [&] {
    ::kill(::getpid(), SIGTERM);
    EXPECT_TRUE(WaitFor([&] {
      loop_.ProcessPaintMessages();
      return loop_.InputEndsWait();
    }));
    EXPECT_FALSE(form_.form.Closing());
    ended = true;
  });
  Settle();
  EXPECT_TRUE(ended);
  EXPECT_TRUE(WaitFor([&] { return form_.form.IsClosed(); }));
  EXPECT_EQ(form_.form.Reason(), controls::CloseReason::kSessionEnd);
}

TEST_F(Waiting, EndOfTheSessionEndsItAndThenCloses) {
  CloseRequests requests(form_.form, loop_);
  EXPECT_TRUE(EndsWait([&] { requests.EndSession(CloseRequests::Interaction::kAllowed); }));
  EXPECT_TRUE(form_.form.IsClosed());
  EXPECT_EQ(form_.form.Reason(), controls::CloseReason::kSessionEnd)
      << "the session does not wait for an answer";
}

TEST_F(Waiting, NoOtherInputEndsIt) {
  const Counter starts(form_.Command1.Clicked);
  const Counter views(form_.Check1.Clicked);
  const Counter deletions(list_.DeletePressed);
  EXPECT_FALSE(EndsWait([&] {
    Press("hscSavVolume", Qt::Key_Left);
    QTest::keyClicks(&fixture_.Find("TextBox1_0"), "neu");
    Press("Command1", Qt::Key_Space);
    Press("Check1", Qt::Key_Space);
    QTest::keyClick(&view_, Qt::Key_Delete);
    QTest::mouseClick(view_.viewport(), Qt::RightButton, {}, QPoint(20, view_.viewport()->height() - 5));
  }));
  EXPECT_EQ(form_.hscSavVolume.Value(), 99) << "each comes afterwards";
  EXPECT_EQ(form_.TextBox1[0].GetText(), u"neu");
  EXPECT_EQ(starts.Count(), 1);
  EXPECT_EQ(views.Count(), 1);
  EXPECT_EQ(deletions.Count(), 1);
}

TEST_F(Waiting, TakingTheSelectionAwayDoesNotEndIt) {
  EXPECT_FALSE(EndsWait([&] {
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, QPoint(20, view_.viewport()->height() - 5));
  }));
  EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
}

TEST_F(Waiting, ControlThatIsNotMarkedEndsNothing) {
  form_.Command6.SetEndsWaiting(false);
  EXPECT_FALSE(EndsWait([&] { Press("Command6", Qt::Key_Space); }));
}

TEST_F(Waiting, WidgetsTakeInputMeanwhile) {
  EXPECT_FALSE(EndsWait([&] {
    QTest::keyClicks(&fixture_.Find("TextBox1_0"), "neu");
    EXPECT_EQ(fixture_.Find<QLineEdit>("TextBox1_0").text(), "neu");
    EXPECT_EQ(form_.TextBox1[0].GetText(), u"");
  }));
}

TEST_F(Waiting, InputOfOneWaitIsInOrderBeforeThatOfTheNext) {
  std::vector<std::string> order;
  controls::Subscriptions subscriptions;
  subscriptions += form_.Command1.Clicked.Subscribe([&] { order.emplace_back("start"); });
  subscriptions += form_.Command2.Clicked.Subscribe([&] { order.emplace_back("directory"); });
  subscriptions += form_.Command6.Clicked.Subscribe([&] { order.emplace_back("stop"); });
  loop_.HandOver(context_, [&] {
    Press("Command1", Qt::Key_Space);
    loop_.ProcessPaintMessages();
    Press("Command2", Qt::Key_Space);
    loop_.ProcessPaintMessages();
    Press("Command6", Qt::Key_Space);
  });
  Settle();
  EXPECT_EQ(order, (std::vector<std::string>{"start", "directory", "stop"}));
}

TEST_F(Waiting, PumpInsideAPaintingWaitRunsWhatWasHeld) {
  const Counter stops(form_.Command6.Clicked);
  int inside = -1;
  loop_.HandOver(context_, [&] {
    Press("Command6", Qt::Key_Space);
    Later([&] {
      loop_.ProcessPendingMessages();
      inside = stops.Count();
    });
    while (inside < 0) loop_.ProcessPaintMessages();
  });
  Settle();
  EXPECT_EQ(inside, 1);
}

// Escape

void PressEscape(QWidget& widget) { QTest::keyClick(&widget, Qt::Key_Escape); }

TEST_F(Waiting, EscapeEndsItAndIsStillSeen) {
  bool seen = false;
  loop_.HandOver(context_, [&] {
    EXPECT_FALSE(loop_.InputEndsWait());
    PressEscape(view_);
    EXPECT_TRUE(loop_.InputEndsWait());
    loop_.ProcessPendingMessages();
    EXPECT_TRUE(loop_.InputEndsWait()) << "the next wait of the same procedure, too";
    seen = loop_.GetAsyncKeyState(kVkEscape) != 0;
  });
  Settle();
  EXPECT_TRUE(seen);
  EXPECT_FALSE(loop_.InputEndsWait());
}

TEST_F(Waiting, EscapeEndsNoWaitThatBeginsLater) {
  bool later = true;
  loop_.HandOver(context_, [&] {
    PressEscape(view_);
    loop_.HandOver(context_, [&] { later = loop_.InputEndsWait(); });
    loop_.ProcessPendingMessages();
  });
  Settle();
  EXPECT_FALSE(later);
  loop_.HandOver(context_, [&] { later = loop_.InputEndsWait(); });
  Settle();
  EXPECT_FALSE(later);
}

TEST_F(Waiting, EscapeEndsTheWaitsOfEveryProcedureThatRan) {
  bool outer = false;
  loop_.HandOver(context_, [&] {
    loop_.HandOver(context_, [&] { PressEscape(view_); });
    loop_.ProcessPendingMessages();
    outer = loop_.InputEndsWait();
  });
  Settle();
  EXPECT_TRUE(outer);
}

TEST_F(Waiting, EscapeThatIsHeldDownSinceBeforeEndsNothing) {
  EXPECT_FALSE(EndsWait([&] {
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Escape, {}, {}, true);
    QApplication::sendEvent(&view_, &repeated);
  }));
}

TEST_F(Waiting, EscapeEndsNothingInAProgramWhoseProceduresGoOnForLong) {
  QtMessageLoop loop(LongProcedures::kAreWork);
  bool ended = true;
  loop.HandOver(context_, [&] {
    PressEscape(view_);
    ended = loop.InputEndsWait();
  });
  Settle();
  EXPECT_FALSE(ended);
}

// The pointer

bool PointerIsBusy() {
  return QApplication::overrideCursor() != nullptr &&
         QApplication::overrideCursor()->shape() == Qt::BusyCursor;
}

/// Waits in `round` until the pointer is busy, and gives how long that took, in milliseconds; -1 for never.
qint64 UntilBusy(const std::function<void()>& round) {
  QElapsedTimer clock;
  clock.start();
  while (!PointerIsBusy()) {
    if (clock.elapsed() > 5000) return -1;
    round();
  }
  return clock.elapsed();
}

TEST_F(Waiting, PointerIsBusyInALongWaitAndNotAfterIt) {
  for (const bool paints : {true, false}) {
    qint64 after = -1;
    loop_.HandOver(context_, [&] {
      const auto round = [&] { paints ? loop_.ProcessPaintMessages() : loop_.ProcessPendingMessages(); };
      round();
      EXPECT_FALSE(PointerIsBusy()) << "a short wait shows nothing";
      after = UntilBusy(round);
    });
    Settle();
    EXPECT_GE(after, 190);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }
}

TEST_F(Waiting, PointerStaysBusyWhenAWaitInsideAnotherEnds) {
  bool busy_after_inner = false;
  loop_.HandOver(context_, [&] {
    loop_.ProcessPendingMessages();
    UntilBusy([&] { loop_.ProcessPendingMessages(); });
    loop_.HandOver(context_, [&] { UntilBusy([&] { loop_.ProcessPaintMessages(); }); });
    loop_.ProcessPendingMessages();
    busy_after_inner = PointerIsBusy();
  });
  Settle();
  EXPECT_TRUE(busy_after_inner);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Waiting, PointerIsNotBusyWhileADialogWaitsForTheUser) {
  QtDialogs dialogs(fixture_.paths);
  bool busy_inside = true;
  // In a box that waits, the event loop comes to rest.
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
    QWidget* const box = QApplication::activeModalWidget();
    if (box == nullptr) return;
    busy_inside = PointerIsBusy();
    poll.stop();
    QTest::keyClick(box, Qt::Key_Return);
  });
  loop_.HandOver(context_, [&] {
    UntilBusy([&] { loop_.ProcessPaintMessages(); });
    poll.start(20);
    dialogs.MessageBoxW(u"Text", u"", kMbIconInformation);
    EXPECT_FALSE(PointerIsBusy());
    QCoreApplication::exit();
  });
  QApplication::exec();
  EXPECT_FALSE(busy_inside);
}

TEST_F(Waiting, PointerIsNotLeftBusyByAClosingOrAnException) {
  loop_.HandOver(context_, [&] {
    UntilBusy([&] { loop_.ProcessPaintMessages(); });
    form_.form.Close();
  });
  Settle();
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_THROW(loop_.Tick([&] {
    UntilBusy([&] { loop_.ProcessPaintMessages(); });
    throw 1;
  }),
               int);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

// A title that is fetched every few seconds delays nobody as long as the window processes messages.
TEST_F(Waiting, PointerIsNotBusyWhileATickPumps) {
  bool busy_while_painting = false;
  loop_.Tick([&] {
    busy_while_painting = UntilBusy([&] { loop_.ProcessPaintMessages(); }) >= 0;
    loop_.ProcessPendingMessages();
    EXPECT_FALSE(PointerIsBusy());
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 400) loop_.ProcessPendingMessages();
    EXPECT_FALSE(PointerIsBusy());
  });
  EXPECT_TRUE(busy_while_painting);
}

TEST_F(Waiting, PointerIsBusyInTheRecordersWindowOnlyWhileItConnects) {
  QtMessageLoop loop(LongProcedures::kAreWork);
  loop.HandOver(context_, [&] {
    EXPECT_GE(UntilBusy([&] { loop.ProcessPaintMessages(); }), 0);
    loop.ProcessPendingMessages();
    EXPECT_FALSE(PointerIsBusy()) << "the recording itself";
  });
  Settle();
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

}  // namespace
}  // namespace platform::qt
