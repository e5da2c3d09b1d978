#include "platform/qt/new_station_window.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QTimer>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class NewStation : public ::testing::Test {
 protected:
  NewStation() : icons_(paths_) {
    cancel_ = form_.CommandButton2.Clicked.Subscribe([this] { form_.form.Close(); });
  }
  template <typename Widget = QWidget>
  Widget& Find(const QDialog& window, const char* name) {
    return *static_cast<Widget*>(window.findChild<QWidget*>(QLatin1String(name)));
  }
  /// Runs the dialog with `action` as the first thing that happens in it.
  void RunWith(NewStationWindow& window, const std::function<void()>& action) {
    QTimer::singleShot(0, &window, action);
    window.RunModal();
  }

  PlainPaths paths_;
  QtIcons icons_;
  QtMessageLoop loop_;
  app::Form2 form_;
  controls::Subscription cancel_;
};

TEST_F(NewStation, BlocksTheMainWindowUntilTheFormCloses) {
  WindowFixture main;
  ASSERT_TRUE(main.Open());
  NewStationWindow window(form_, icons_, loop_, main.window.get());
  const QWidget* modal = nullptr;
  RunWith(window, [&] {
    modal = QApplication::activeModalWidget();
    form_.form.Close();
  });
  EXPECT_EQ(modal, &window);
  EXPECT_FALSE(window.isVisible());
}

TEST_F(NewStation, FieldsAreBoundAndPasteButtonsBelongToTheirFields) {
  NewStationWindow window(form_, icons_, loop_);
  const Counter first(form_.CommandButton3[0].Clicked);
  const Counter second(form_.CommandButton3[1].Clicked);
  RunWith(window, [&] {
    QTest::keyClicks(&Find(window, "TextBox1_0"), "Neu");
    QTest::mouseClick(&Find(window, "CommandButton3_1"), Qt::LeftButton);
    Settle();
    form_.form.Close();
  });
  EXPECT_EQ(form_.TextBox1[0].GetText(), u"Neu");
  EXPECT_EQ(first.Count(), 0);
  EXPECT_EQ(second.Count(), 1);
}

TEST_F(NewStation, EnterAcceptsAndEscapeCancels) {
  NewStationWindow window(form_, icons_, loop_);
  const Counter accepted(form_.CommandButton1.Clicked);
  const Counter cancelled(form_.CommandButton2.Clicked);
  RunWith(window, [&] {
    QTest::keyClick(&Find(window, "TextBox1_0"), Qt::Key_Return);
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  EXPECT_EQ(accepted.Count(), 1);
  EXPECT_EQ(cancelled.Count(), 1);
  EXPECT_TRUE(form_.form.IsClosed());
}

TEST_F(NewStation, CloseButtonClosesTheForm) {
  NewStationWindow window(form_, icons_, loop_);
  RunWith(window, [&] { window.close(); });
  EXPECT_TRUE(form_.form.IsClosed());
}

TEST_F(NewStation, FormThatIsClosedAlreadyDoesNotOpen) {
  NewStationWindow window(form_, icons_, loop_);
  form_.form.Close();
  window.RunModal();
  EXPECT_FALSE(window.isVisible());
}

TEST_F(NewStation, EndOfTheProgramEndsTheDialog) {
  NewStationWindow window(form_, icons_, loop_);
  QTimer::singleShot(0, &window, [&] {
    QTimer::singleShot(0, &window, [] { QCoreApplication::exit(); });
    window.RunModal();
  });
  QApplication::exec();
  EXPECT_FALSE(form_.form.IsClosed());
}

TEST_F(NewStation, TextsFitAndEveryFieldHasAName) {
  NewStationWindow window(form_, icons_, loop_);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  EXPECT_TRUE(Find<FittedLabel>(window, "Label1").ShowsAll());
  for (const char* name : {"TextBox1_0", "TextBox1_1", "Combo1", "CommandButton3_0", "CommandButton1"}) {
    QWidget& widget = Find(window, name);
    EXPECT_TRUE(window.rect().contains(widget.geometry())) << name;
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name).isEmpty()) << name;
  }
}

}  // namespace
}  // namespace platform::qt
