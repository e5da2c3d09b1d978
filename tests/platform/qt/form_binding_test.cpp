#include "platform/qt/form_binding.h"

#include <gtest/gtest.h>

#include <QDialog>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class FormInSight : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(fixture_.Open()); }
  PlayerWindow& Window() { return *fixture_.window; }
  controls::Form& Form() { return fixture_.form.form; }
  WindowFixture fixture_;
};

TEST_F(FormInSight, MinimisedOrHiddenWindowIsOutOfSight) {
  EXPECT_TRUE(Form().InSight());
  Window().showMinimized();
  EXPECT_TRUE(WaitFor([this] { return !Form().InSight(); }));
  Window().showNormal();
  EXPECT_TRUE(WaitFor([this] { return Form().InSight(); }));
  Window().hide();
  EXPECT_FALSE(Form().InSight());
  Window().show();
  EXPECT_TRUE(Form().InSight());
}

TEST_F(FormInSight, FormThatWantsTheFocusBringsItsWindowToTheFront) {
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  Window().setWindowState(Qt::WindowMinimized);
  Form().SetFocus();
  EXPECT_TRUE(WaitFor([this] { return Window().isActiveWindow() && !Window().isMinimized(); }));
}

TEST_F(FormInSight, DialogThatStandsOpenComesToTheFrontInsteadOfTheForm) {
  QDialog dialog(&Window());
  dialog.setModal(true);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  Form().SetFocus();
  EXPECT_TRUE(WaitFor([&] { return dialog.isActiveWindow(); }));
}

}  // namespace
}  // namespace platform::qt
