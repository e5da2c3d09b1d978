// The whole program, without a screen, whose session ends while it asks whether to save.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QSessionManager>
#include <QTimer>
#include <array>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

#include "programs/linux/program.h"
#include "tests/support/temp_folder.h"
#include "window/main_window.h"

namespace {

class SessionEndProgramTest : public ::testing::Test {
 protected:
  SessionEndProgramTest() {
    folder_.Write("Ordnerzentrale/Funkhaus.ini", kStations);
    ::setenv("APPDATA", folder_.Path().c_str(), 1);
    ::setenv("XDG_STATE_HOME", (folder_.Path() / "state").c_str(), 1);
    ::setenv("XDG_DATA_HOME", (folder_.Path() / "data").c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    program_ = std::make_unique<Program>(count_, arguments_.data());
  }

  /// Acts on each modal dialog once it is shown: the new-station dialog, then each message box.
  void Watch(QTimer& poll, const std::function<void(QWidget&)>& act) {
    QObject::connect(&poll, &QTimer::timeout, &poll, [this, act] {
      QWidget* dialog = QApplication::activeModalWidget();
      if (dialog == nullptr || !dialog->isVisible() || dialog == last_dialog_) return;
      last_dialog_ = dialog;
      act(*dialog);
    });
    poll.start(5);
  }
  /// A new station is made, and the offer to save it declined; then the session ends. How many boxes asked.
  int RunUntil(const std::function<void()>& end_of_session) {
    QTimer poll;
    int boxes = 0;
    Watch(poll, [&](QWidget& dialog) {
      auto* box = qobject_cast<QMessageBox*>(&dialog);
      if (box == nullptr) return AcceptNewStation(dialog);
      ++boxes;
      box->button(QMessageBox::No)->click();
      QTimer::singleShot(0, end_of_session);
    });
    QTimer::singleShot(0, [this] { program_->Logic().Controls().CommandButton2.Click(); });
    EXPECT_EQ(program_->Run(), 0);
    return boxes;
  }
  static void AcceptNewStation(QWidget& dialog) {
    dialog.findChild<QLineEdit*>(QStringLiteral("TextBox1_0"))->setText(QStringLiteral("Grüner Hügel"));
    dialog.findChild<QLineEdit*>(QStringLiteral("TextBox1_1"))->setText(QStringLiteral("http://127.0.0.1/x"));
    dialog.findChild<QAbstractButton*>(QStringLiteral("CommandButton1"))->click();
  }

  /// The station file is as it was, and the next start has the new station as an unsaved change.
  void ExpectRowKept() {
    EXPECT_EQ(folder_.Read("Ordnerzentrale/Funkhaus.ini"), kStations);
    program_.reset();
    program_ = std::make_unique<Program>(count_, arguments_.data());
    const controls::ListView& list = program_->Logic().Controls().SymbolListview;
    ASSERT_EQ(list.Count(), 2U);
    EXPECT_EQ(list.Rows()[0].cells[0], u"Grüner Hügel");
    EXPECT_TRUE(program_->Logic().GetSettings().CatalogueChanged);
  }

  static constexpr const char* kStations =
      "; von Hand\r\n[Radio Beispiel]\r\nStation=Radio Beispiel\r\nLink=http://127.0.0.1/a\r\n"
      "Genre=Rock\r\nFavorit=1\r\nM3uNr=\r\n";
  test_support::TempFolder folder_;
  std::string name_ = "funkhausplayer";
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  int count_ = 1;
  std::unique_ptr<Program> program_;
  QPointer<QWidget> last_dialog_;
};

TEST_F(SessionEndProgramTest, SignalWithAnUnsavedRowKeepsItAndEndsTheProgram) {
  EXPECT_EQ(RunUntil([] { ::kill(::getpid(), SIGTERM); }), 1) << "nobody is asked when the session ends";
  ExpectRowKept();
  EXPECT_EQ(folder_.Read("Ordnerzentrale/Opt.ini"), "[Pfad3]\r\nFunkhausFavorit=0\r\n");
}

TEST_F(SessionEndProgramTest, LogOutThatAllowsNoQuestionKeepsAnUnsavedRowAndEndsTheProgram) {
  EXPECT_EQ(RunUntil([] { Q_EMIT qApp->commitDataRequest(*qApp->findChild<QSessionManager*>()); }), 1)
      << "nobody is asked when the session ends";
  ExpectRowKept();
}

TEST_F(SessionEndProgramTest, SignalWhileTheQuestionStandsOpenKeepsTheRowAndEndsTheProgram) {
  QTimer poll;
  Watch(poll, [&](QWidget& dialog) {
    if (qobject_cast<QMessageBox*>(&dialog) == nullptr) return AcceptNewStation(dialog);
    ::kill(::getpid(), SIGTERM);
  });
  QTimer::singleShot(0, [this] { program_->Logic().Controls().CommandButton2.Click(); });
  EXPECT_EQ(program_->Run(), 0);
  ExpectRowKept();
}

TEST_F(SessionEndProgramTest, SignalInsideTheClosingQuestionKeepsTheRowAndEndsTheProgram) {
  QTimer poll;
  int boxes = 0;
  Watch(poll, [&](QWidget& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    if (box == nullptr) return AcceptNewStation(dialog);
    if (++boxes == 2) return static_cast<void>(::kill(::getpid(), SIGHUP));
    box->button(QMessageBox::No)->click();
    QTimer::singleShot(0, [this] { program_->Logic().Controls().form.Close(); });
  });
  QTimer::singleShot(0, [this] { program_->Logic().Controls().CommandButton2.Click(); });
  EXPECT_EQ(program_->Run(), 0);
  EXPECT_EQ(boxes, 2);
  ExpectRowKept();
}

}  // namespace
