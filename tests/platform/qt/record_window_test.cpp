#include "platform/qt/record_window.h"

#include <gtest/gtest.h>

#include <QTimer>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class Recording : public ::testing::Test {
 protected:
  template <typename Widget = QWidget>
  Widget& Find(const char* name) {
    return *static_cast<Widget*>(window_.findChild<QWidget*>(QLatin1String(name)));
  }

  PlainPaths paths_;
  QtIcons icons_{paths_};
  QtMessageLoop loop_;
  app::RecordForm form_;
  RecordWindow window_{form_, icons_, loop_};
};

TEST_F(Recording, EnterInTheAddressStarts) {
  const Counter started(form_.start.Clicked);
  window_.show();
  QTest::keyClicks(&Find("address"), "http://a");
  QTest::keyClick(&Find("address"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(form_.address.GetText(), u"http://a");
  EXPECT_EQ(started.Count(), 1);
}

TEST_F(Recording, ButtonsAreBound) {
  const Counter stopped(form_.stop.Clicked);
  const Counter opened(form_.open_folder.Clicked);
  window_.show();
  QTest::mouseClick(&Find("stop"), Qt::LeftButton);
  QTest::mouseClick(&Find("open_folder"), Qt::LeftButton);
  Settle();
  EXPECT_EQ(stopped.Count(), 1);
  EXPECT_EQ(opened.Count(), 1);
}

TEST_F(Recording, EscapeEndsNothing) {
  window_.show();
  QTest::keyClick(&window_, Qt::Key_Escape);
  Settle();
  EXPECT_TRUE(window_.isVisible());
  EXPECT_FALSE(form_.form.Closing());
}

TEST_F(Recording, ClosingTheWindowClosesTheFormAndEndsTheProgram) {
  window_.show();
  QTimer::singleShot(0, &window_, [this] { window_.close(); });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_TRUE(form_.form.IsClosed());
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(Recording, TextsFitAndMarkupIsShownAsItIs) {
  form_.title.SetCaption(u"<b>Eins</b> & Zwei");
  form_.state.SetCaption(u"Unter dieser Adresse gibt es keinen Sender (404), neuer Versuch in 30 s");
  window_.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
  EXPECT_EQ(Find<QLabel>("title").text(), QStringLiteral("<b>Eins</b> & Zwei"));
  for (const char* name : {"title", "state", "written_label", "station_label"}) {
    EXPECT_TRUE(Find<FittedLabel>(name).ShowsAll()) << name;
    EXPECT_TRUE(window_.rect().contains(Find(name).geometry())) << name;
  }
}

}  // namespace
}  // namespace platform::qt
