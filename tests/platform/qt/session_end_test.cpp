// The end of the session while a dialog of the program is open.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <csignal>
#include <cstdlib>
#include <optional>

#include "app/forms/form2.h"
#include "platform/qt/close_requests.h"
#include "platform/qt/dialogs.h"
#include "platform/qt/new_station_window.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class SessionEndTest : public ::testing::Test {
 protected:
  SessionEndTest() {
    // A dialog that does not close must not block the other tests.
    QObject::connect(&deadline_, &QTimer::timeout, &deadline_, [] {
      ADD_FAILURE() << "the program did not end";
      std::abort();
    });
    deadline_.setSingleShot(true);
    deadline_.start(30'000);
  }

  /// Opens the window, runs `opens_dialog` and sends the signal as soon as a modal dialog of the class is
  /// shown; returns when the program's event loop has ended.
  void EndSessionInside(const std::function<void()>& opens_dialog, const char* dialog_class = "QDialog") {
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      const QWidget* dialog = QApplication::activeModalWidget();
      if (dialog == nullptr || !dialog->isVisible() || !dialog->inherits(dialog_class)) return;
      poll.stop();
      dialog_was_open_ = true;
      ::kill(::getpid(), SIGTERM);
    });
    poll.start(5);
    QTimer::singleShot(0, opens_dialog);
    fixture_.window->Run();
  }
  /// The same with a popup, which the end of the program must not wait for.
  void EndSessionInsideAPopup(const std::function<void()>& opens_popup) {
    QTimer::singleShot(0, qApp, [&] {
      opens_popup();
      EXPECT_NE(QApplication::activePopupWidget(), nullptr);
      ::kill(::getpid(), SIGTERM);
    });
    fixture_.window->Run();
    EXPECT_TRUE(Form().IsClosed());
    EXPECT_FALSE(fixture_.window->isVisible());
  }
  controls::Form& Form() { return fixture_.form.form; }

  WindowFixture fixture_;
  QtDialogs dialogs_{fixture_.paths};
  CloseRequests requests_{fixture_.form.form, fixture_.loop};
  bool dialog_was_open_ = false;
  QTimer deadline_;
};

TEST_F(SessionEndTest, SignalNotifiesTheFormThatTheSessionEnds) {
  std::optional<controls::CloseReason> reason;
  const auto ask = Form().QueryUnload.Subscribe([&] { reason = Form().Reason(); });
  QTimer::singleShot(0, [] { ::kill(::getpid(), SIGHUP); });
  fixture_.window->Run();
  EXPECT_EQ(reason, controls::CloseReason::kSessionEnd);
  EXPECT_TRUE(Form().IsClosed());
}

TEST_F(SessionEndTest, OpenMessageBoxIsDismissedWithTheAnswerThatStartsNothing) {
  dialogs_.SetMainWindow(fixture_.window.get());
  std::optional<MessageBoxAnswer> answer;
  EndSessionInside([&] { answer = dialogs_.MessageBoxW(u"Neu?", u"", kMbOkCancel | kMbIconQuestion); });
  EXPECT_TRUE(dialog_was_open_);
  EXPECT_EQ(answer, MessageBoxAnswer::kCancel);
  EXPECT_TRUE(Form().IsClosed());
}

TEST_F(SessionEndTest, QuestionOfTheClosingItselfIsDismissedAndTheClosingContinues) {
  dialogs_.SetMainWindow(fixture_.window.get());
  std::optional<MessageBoxAnswer> answer;
  controls::CloseReason reason_after = controls::CloseReason::kUser;
  const auto ask = Form().QueryUnload.Subscribe([&] {
    answer = dialogs_.MessageBoxW(u"Speichern?", u"", kMbYesNo | kMbIconQuestion);
    reason_after = Form().Reason();
  });
  EndSessionInside([this] { fixture_.window->close(); });
  EXPECT_TRUE(dialog_was_open_);
  EXPECT_EQ(answer, MessageBoxAnswer::kNo);
  EXPECT_EQ(reason_after, controls::CloseReason::kSessionEnd);
  EXPECT_TRUE(Form().IsClosed());
}

TEST_F(SessionEndTest, OpenFileDialogIsCancelled) {
  std::optional<bool> chosen;
  EndSessionInside([&] {
    OpenFileName record;
    record.filter = std::u16string(u"M3U-Datei (*.m3u)\0*.m3u\0\0", 25);
    record.file = std::u16string(512, u'\0');
    chosen = dialogs_.GetSaveFileNameW(record);
  });
  EXPECT_TRUE(dialog_was_open_);
  EXPECT_EQ(chosen, false);
  EXPECT_TRUE(Form().IsClosed());
}

TEST_F(SessionEndTest, QuestionOfAFileDialogIsLeftWithTheDialog) {
  const QString folder = QDir::tempPath();
  const QString file = folder + QStringLiteral("/funkhaus_end_%1.m3u").arg(QApplication::applicationPid());
  ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
  std::optional<bool> chosen;
  EndSessionInside(
      [&] {
        QTimer::singleShot(0, qApp, [] {
          QMetaObject::invokeMethod(QApplication::activeModalWidget(), "accept", Qt::QueuedConnection);
        });
        OpenFileName record;
        record.flags = kOfnOverwritePrompt;
        record.file = FromQt(file) + std::u16string(512, u'\0');
        chosen = dialogs_.GetSaveFileNameW(record);
      },
      "QMessageBox");
  QFile::remove(file);
  EXPECT_TRUE(dialog_was_open_);
  EXPECT_EQ(chosen, false);
  EXPECT_TRUE(Form().IsClosed());
}

TEST_F(SessionEndTest, OpenMenuGoesWithTheWindow) {
  auto& list = fixture_.Find<QWidget>("SymbolListview");
  EndSessionInsideAPopup([&] {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), list.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&list, &event);
  });
}

TEST_F(SessionEndTest, OpenGenreListGoesWithTheWindow) {
  fixture_.form.Combo1.AddItem(u"Rock");
  EndSessionInsideAPopup([&] { fixture_.Find<QComboBox>("Combo1").showPopup(); });
}

TEST_F(SessionEndTest, NewStationDialogAndItsMessageAreLeftTogether) {
  app::Form2 form2;
  bool left = false;
  EndSessionInside(
      [&] {
        NewStationWindow window(form2, fixture_.icons, fixture_.loop, fixture_.window.get());
        QTimer::singleShot(0, [&] { dialogs_.MessageBoxW(u"Name fehlt", u"", kMbIconInformation); });
        window.RunModal();
        left = true;
      },
      "QMessageBox");
  EXPECT_TRUE(dialog_was_open_);
  EXPECT_TRUE(left);
  EXPECT_TRUE(Form().IsClosed());
}

}  // namespace
}  // namespace platform::qt
