// The titles that a window manager is given: the windows' own, without anything that the toolkit adds.
#include <gtest/gtest.h>

#include <QDialog>
#include <QProcess>
#include <QTimer>

#include "platform/qt/dialogs.h"
#include "platform/qt/new_station_window.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// What the display knows the window by.
QString TitleOnDisplay(const QWidget& window) {
  QProcess tool;
  tool.start(QStringLiteral("xdotool"), {QStringLiteral("getwindowname"), QString::number(window.winId())});
  EXPECT_TRUE(tool.waitForFinished(10000));
  return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

class Titles : public ::testing::Test {
 protected:
  void SetUp() override {
    fixture_.window->Open();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(fixture_.window.get()));
  }

  /// The title of the dialog that `open` shows; the dialog is closed.
  QString OfDialog(const std::function<void()>& open) {
    QString title;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return;
      poll.stop();
      title = TitleOnDisplay(*dialog);
      dialog->done(QDialog::Rejected);
    });
    poll.start(20);
    open();
    return title;
  }

  WindowFixture fixture_;
  QtDialogs dialogs_{fixture_.paths};
};

TEST_F(Titles, WindowHasItsCaptionAlone) {
  EXPECT_EQ(TitleOnDisplay(*fixture_.window), "Funkhausplayer");
  fixture_.form.form.SetCaption(u"Playing: Lied");
  EXPECT_TRUE(WaitFor([&] { return TitleOnDisplay(*fixture_.window) == "Playing: Lied"; }));
}

TEST_F(Titles, MessageBoxesHaveTheirCaptionOrTheProgramsName) {
  EXPECT_EQ(OfDialog([&] { dialogs_.MessageBoxW(u"Text", u"Datei speichern", kMbOk); }), "Datei speichern");
  EXPECT_EQ(OfDialog([&] { dialogs_.MessageBoxW(u"Text", u"", kMbOk); }), "Funkhausplayer");
}

TEST_F(Titles, FileDialogsHaveTheirOwn) {
  OpenFileName record;
  record.file.resize(300);
  record.title = u"M3U-Datei laden";
  EXPECT_EQ(OfDialog([&] { dialogs_.GetOpenFileNameW(record); }), "M3U-Datei laden");
}

TEST_F(Titles, NewStationDialogHasItsOwn) {
  app::Form2 form;
  NewStationWindow dialog(form, fixture_.icons, fixture_.loop, fixture_.window.get());
  EXPECT_EQ(OfDialog([&] { dialog.RunModal(); }), QString::fromUtf8("Neue Radiostation einfügen"));
}

}  // namespace
}  // namespace platform::qt
