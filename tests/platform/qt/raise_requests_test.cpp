#include "platform/qt/raise_requests.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <deque>
#include <string>
#include <vector>

#include "platform/qt/dialogs.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// Requests that a test makes, behind a real descriptor.
class ScriptedRequests final : public StartRequests {
 public:
  ~ScriptedRequests() override { ::close(descriptor_); }
  [[nodiscard]] int Descriptor() const override { return nobody_can_ask ? -1 : descriptor_; }
  std::optional<StartRequest> Next() override {
    if (current_) ++refused;
    current_ = !waiting_.empty();
    if (!current_) {
      eventfd_t count = 0;
      ::eventfd_read(descriptor_, &count);
      return std::nullopt;
    }
    StartRequest request = std::move(waiting_.front());
    waiting_.pop_front();
    return request;
  }
  void Accept() override {
    current_ = false;
    ++accepted;
  }
  void Ask(const std::string& token = "", const std::string& argument = "") {
    waiting_.push_back({token, argument});
    ::eventfd_write(descriptor_, 1);
  }

  int accepted = 0;
  int refused = 0;
  bool nobody_can_ask = false;

 private:
  int descriptor_ = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
  std::deque<StartRequest> waiting_;
  bool current_ = false;
};

/// Does something at the moment at which a window is put in front.
class AtRaising final : public QObject {
 public:
  AtRaising(QWidget& window, std::function<void()> action) : action_(std::move(action)) {
    window.installEventFilter(this);
  }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::ZOrderChange) action_();
    return false;
  }

 private:
  std::function<void()> action_;
};

class RaiseRequestsTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(fixture_.Open()); }
  /// A window that closes ends the program's event loop; where none runs, the next test's would end at once.
  void TearDown() override {
    if (!Form().IsClosed()) return;
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QApplication::exec();
  }
  /// Another window takes the keyboard, as another program's would.
  void Cover() {
    other_.show();
    other_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other_));
    ASSERT_FALSE(Window().isActiveWindow());
  }
  bool Served() {
    return WaitFor([this] { return requests_.accepted + requests_.refused > 0; });
  }
  PlayerWindow& Window() { return *fixture_.window; }
  controls::Form& Form() { return fixture_.form.form; }

  WindowFixture fixture_;
  ScriptedRequests requests_;
  std::vector<std::string> opened_;
  RaiseRequests raise_{requests_, fixture_.form.form, *fixture_.window, [this](const std::string& argument) {
                         EXPECT_EQ(requests_.accepted, 1) << "accepted before";
                         opened_.push_back(argument);
                       }};
  QWidget other_;
};

TEST_F(RaiseRequestsTest, WindowGetsTheKeyboard) {
  Cover();
  requests_.Ask();
  EXPECT_TRUE(WaitFor([this] { return Window().isActiveWindow(); }));
  EXPECT_EQ(requests_.accepted, 1);
}

TEST_F(RaiseRequestsTest, MinimisedWindowComesBackAsItWas) {
  Window().showMaximized();
  ASSERT_TRUE(WaitFor([this] { return Window().isMaximized(); }));
  Window().setWindowState(Window().windowState() | Qt::WindowMinimized);
  Cover();
  ASSERT_TRUE(Window().isMinimized());
  requests_.Ask();
  EXPECT_TRUE(WaitFor([this] { return Window().isActiveWindow() && !Window().isMinimized(); }));
  EXPECT_TRUE(Window().isMaximized());
}

TEST_F(RaiseRequestsTest, EveryRequestIsAccepted) {
  for (int start = 0; start < 3; ++start) requests_.Ask();
  EXPECT_TRUE(WaitFor([this] { return requests_.accepted == 3; }));
}

TEST_F(RaiseRequestsTest, DialogThatStandsOpenGetsTheKeyboard) {
  Cover();
  QDialog dialog(&Window());
  dialog.setModal(true);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  other_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other_));
  Window().setWindowState(Qt::WindowMinimized);
  requests_.Ask();
  EXPECT_TRUE(WaitFor([&] { return dialog.isActiveWindow(); }));
  EXPECT_FALSE(Window().isMinimized());
  EXPECT_EQ(requests_.accepted, 1);
}

TEST_F(RaiseRequestsTest, WaitThatOnlyPaintsServesToo) {
  Cover();
  requests_.Ask();
  fixture_.loop.ProcessPaintMessages();
  EXPECT_EQ(requests_.accepted, 1);
}

TEST_F(RaiseRequestsTest, QuestionOfTheClosingGetsTheKeyboard) {
  QtDialogs dialogs(fixture_.paths);
  dialogs.SetMainWindow(&Window());
  bool box_was_active = false;
  const auto ask = Form().QueryUnload.Subscribe([&] {
    QTimer::singleShot(0, [&] {
      QWidget* box = QApplication::activeModalWidget();
      ASSERT_TRUE(QTest::qWaitForWindowExposed(box));
      Cover();
      requests_.Ask();
      box_was_active = WaitFor([box] { return box->isActiveWindow(); });
      static_cast<QMessageBox*>(box)->button(QMessageBox::No)->click();
    });
    dialogs.MessageBoxW(u"Speichern?", u"", kMbYesNo | kMbIconQuestion);
  });
  Form().Close();
  EXPECT_TRUE(box_was_active);
  EXPECT_EQ(requests_.accepted, 1);
}

TEST_F(RaiseRequestsTest, WindowThatGoesRefuses) {
  const auto unload = Form().Unloaded.Subscribe([this] {
    requests_.Ask();
    EXPECT_TRUE(Served());
  });
  Form().Close();
  EXPECT_EQ(requests_.accepted, 0);
  EXPECT_EQ(requests_.refused, 1);
}

TEST_F(RaiseRequestsTest, WindowThatIsNotShownRefuses) {
  Window().hide();
  requests_.Ask();
  EXPECT_TRUE(Served());
  EXPECT_EQ(requests_.accepted, 0);
  EXPECT_FALSE(Window().isVisible());
}

TEST_F(RaiseRequestsTest, TokenIsThereForTheActivationAndNotLater) {
  QByteArray meanwhile;
  const AtRaising at_raising(Window(), [&] { meanwhile = qgetenv("XDG_ACTIVATION_TOKEN"); });
  requests_.Ask("token-of-the-later-start");
  ASSERT_TRUE(Served());
  EXPECT_EQ(meanwhile, "token-of-the-later-start");
  EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST_F(RaiseRequestsTest, WhatAStartWasGivenIsOpened) {
  requests_.Ask("", "/a.m3u");
  ASSERT_TRUE(Served());
  EXPECT_EQ(opened_, std::vector<std::string>{"/a.m3u"});
  requests_.Ask();
  EXPECT_TRUE(WaitFor([this] { return requests_.accepted == 2; }));
  EXPECT_EQ(opened_.size(), 1U) << "nothing was given";
}

TEST_F(RaiseRequestsTest, WhileTheClosingAsksNothingIsAcceptedThatIsToBeOpened) {
  const auto question = Form().QueryUnload.Subscribe([this] {
    QDialog dialog(&Window());
    dialog.setModal(true);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    requests_.Ask("", "/a.m3u");
    EXPECT_TRUE(Served());
  });
  Form().Close();
  EXPECT_EQ(requests_.accepted, 0);
  EXPECT_GE(requests_.refused, 1);
  EXPECT_TRUE(opened_.empty());
}

TEST_F(RaiseRequestsTest, NothingHappensAfterwards) {
  {
    const WindowFixture fixture;
    const RaiseRequests gone(requests_, fixture_.form.form, Window());
  }
  requests_.Ask();
  EXPECT_TRUE(Served()) << "by the one that is left";
  EXPECT_EQ(requests_.accepted, 1);
}

TEST(RaiseRequestsWithoutAPlace, DoNothing) {
  WindowFixture fixture;
  ScriptedRequests requests;
  requests.nobody_can_ask = true;
  const RaiseRequests raise(requests, fixture.form.form, *fixture.window);
  requests.Ask();
  for (int round = 0; round < 5; ++round) fixture.loop.ProcessPendingMessages();
  EXPECT_EQ(requests.accepted + requests.refused, 0);
}

}  // namespace
}  // namespace platform::qt
