// The whole program that ends without having asked - killed, without its screen, at a log-out - and the next
// start. Each run that ends so is a process of its own.
#include <sys/wait.h>
#include <unistd.h>

#include <QLineEdit>
#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "tests/program/program_rig.h"
#include "tests/support/child_process.h"

namespace program_test {
namespace {

using std::chrono::seconds;
using test_support::ChildProcess;

constexpr const char* kStationsBefore =
    "; von Hand\r\n[Radio A]\r\nStation=Radio A\r\nLink=/fehlt.mp3\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\n";
constexpr const char* kNewStation =
    "[Radio B]\r\nGenre=80er/90er\r\nLink=http://127.0.0.1:9/b\r\nFavorit=\r\nM3uNr=\r\n";

class UnaskedEnd : public ProgramRig {
 protected:
  /// How the process in which `life` ran has ended; a failed expectation in it counts as 3.
  static int EndOf(const std::function<void()>& life) {
    const pid_t child = ::fork();
    if (child == 0) {
      life();
      ::_exit(::testing::Test::HasFailure() ? 3 : 0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
  }
  static bool WasKilled(int status) { return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL; }
  static bool Returned(int status, int code) { return WIFEXITED(status) && WEXITSTATUS(status) == code; }
  static void KillMyself() {
    if (::testing::Test::HasFailure()) ::_exit(3);
    ::kill(::getpid(), SIGKILL);
  }

  [[nodiscard]] bool IsKept() const {
    const auto folder = folder_.Path() / "state/funkhausplayer";
    if (!std::filesystem::exists(folder)) return false;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".unsaved") return true;
    }
    return false;
  }
  /// Lets the program run until what was entered is kept.
  void WaitUntilKept() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return IsKept(); }, 20'000));
  }

  /// A station is entered in the dialog, and the offer to save it declined.
  void EnterStation() {
    Expect([](QWidget& dialog) {
      Type(*dialog.findChild<QLineEdit*>(QStringLiteral("TextBox1_0")), "Radio B");
      Type(*dialog.findChild<QLineEdit*>(QStringLiteral("TextBox1_1")), "http://127.0.0.1:9/b");
      PressButton(dialog, "CommandButton1");
    });
    ExpectBox(QMessageBox::No);
    Click("CommandButton2");
    EXPECT_EQ(Column(), QStringList({"Radio A", "Radio B"}));
  }
  void StartAndEnterStation(const std::function<void()>& then) {
    Start(kStationsBefore);
    Run([&] {
      EnterStation();
      then();
    });
  }

  /// The next start, in this process: the station is there and not saved.
  void StartAgain() {
    EXPECT_EQ(Stations(), kStationsBefore);
    Start(kStationsBefore);
    EXPECT_EQ(Form().StatusLine.Caption(), u"Ein nicht gespeicherter Eintrag wurde wiederhergestellt.");
  }
  void ExpectAskedAndAnswered(QMessageBox::StandardButton answer) {
    ExpectBox(answer);
    if (answer == QMessageBox::Yes) ExpectBox(QMessageBox::Ok);
    EXPECT_EQ(Run([this] {
                EXPECT_EQ(Column(), QStringList({"Radio A", "Radio B"}));
                program_->Window().close();
              }),
              0);
    EXPECT_TRUE(NothingExpected());
    EXPECT_EQ(box_texts_.first(), QString::fromUtf8("Sollen die Änderungen gespeichert werden?"));
    EXPECT_FALSE(IsKept());
  }
};

TEST_F(UnaskedEnd, KilledAMomentAfterTheDialogTheStationComesBackAndYesSavesIt) {
  ASSERT_TRUE(WasKilled(EndOf([this] {
    StartAndEnterStation([this] {
      WaitUntilKept();
      KillMyself();
    });
  })));
  StartAgain();
  ExpectAskedAndAnswered(QMessageBox::Yes);
  EXPECT_EQ(Stations(), std::string(kStationsBefore) + kNewStation);
}

TEST_F(UnaskedEnd, StationThatCameBackIsGoneForGoodAfterANo) {
  ASSERT_TRUE(WasKilled(EndOf([this] {
    StartAndEnterStation([this] {
      WaitUntilKept();
      KillMyself();
    });
  })));
  StartAgain();
  ExpectAskedAndAnswered(QMessageBox::No);
  EXPECT_EQ(Stations(), kStationsBefore);
}

TEST_F(UnaskedEnd, KilledTwiceItComesBackTwice) {
  ASSERT_TRUE(WasKilled(EndOf([this] {
    StartAndEnterStation([this] {
      WaitUntilKept();
      KillMyself();
    });
  })));
  ASSERT_TRUE(WasKilled(EndOf([this] {
    StartAgain();
    Run([] { KillMyself(); });
  })));
  StartAgain();
  ExpectAskedAndAnswered(QMessageBox::No);
}

TEST_F(UnaskedEnd, ThreeThousandImportedRowsComeBackAndAreNotAskedAbout) {
  constexpr int kRows = 3000;
  std::string playlist = "#EXTM3U\n";
  for (int row = 0; row < kRows; ++row) {
    playlist +=
        "#EXTINF:-1,Import " + std::to_string(row) + "\nhttp://127.0.0.1:9/" + std::to_string(row) + "\n";
  }
  const std::string path = folder_.Write("liste.m3u", playlist);
  ASSERT_TRUE(WasKilled(EndOf([&] {
    Start(kStationsBefore);
    ExpectFileDialog(path);
    ExpectBox(QMessageBox::Yes);
    Run([this] {
      Click("Command5");
      EXPECT_EQ(List().model()->rowCount(), kRows + 1);
      WaitUntilKept();
      KillMyself();
    });
  })));
  EXPECT_EQ(Stations(), kStationsBefore);
  Start(kStationsBefore);
  EXPECT_EQ(Form().StatusLine.Caption(), u"3000 nicht gespeicherte Einträge wurden wiederhergestellt.");
  EXPECT_EQ(Run([this] {
              EXPECT_EQ(List().model()->rowCount(), kRows + 1);
              EXPECT_EQ(Column(2).count(QStringLiteral("http://127.0.0.1:9/2999")), 1);
              program_->Window().close();
            }),
            0);
  EXPECT_EQ(Stations(), kStationsBefore);
  EXPECT_FALSE(IsKept());
}

TEST_F(UnaskedEnd, WithoutItsScreenTheProgramLosesNothing) {
  ChildProcess screen({"Xvfb", "-displayfd", "1", "-screen", "0", "1366x768x24", "-nolisten", "tcp"}, {},
                      ChildProcess::Output::kPiped);
  std::array<char, 16> number{};
  ASSERT_GT(::read(screen.OutputDescriptor(), number.data(), number.size() - 1), 0);
  const std::string display = ":" + std::to_string(std::atoi(number.data()));
  const pid_t screen_pid = screen.Pid();
  const int status = EndOf([&] {
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    ::setenv("DISPLAY", display.c_str(), 1);
    StartAndEnterStation([&] {
      WaitUntilKept();
      if (::testing::Test::HasFailure()) ::_exit(3);
      ::kill(screen_pid, SIGTERM);
      // The toolkit ends the process as soon as it notices.
      QTest::qWait(20'000);
      ::_exit(4);
    });
  });
  EXPECT_TRUE(Returned(status, 1)) << status;
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  StartAgain();
  ExpectAskedAndAnswered(QMessageBox::No);
}

TEST_F(UnaskedEnd, ClosedInAnOrderlyWayNothingIsLeft) {
  for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
    const int status = EndOf([&] {
      Start(kStationsBefore);
      EXPECT_EQ(Run([&] {
                  EnterStation();
                  WaitUntilKept();
                  ExpectBox(answer);
                  if (answer == QMessageBox::Yes) ExpectBox(QMessageBox::Ok);
                  program_->Window().close();
                }),
                0);
      EXPECT_FALSE(IsKept());
    });
    EXPECT_TRUE(Returned(status, 0));
    const bool saved = answer == QMessageBox::Yes;
    EXPECT_EQ(Stations(), std::string(kStationsBefore) + (saved ? kNewStation : ""));
  }
}

TEST_F(UnaskedEnd, DamagedFileIsSetAsideAndReported) {
  ASSERT_TRUE(WasKilled(EndOf([this] {
    StartAndEnterStation([this] {
      WaitUntilKept();
      KillMyself();
    });
  })));
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Path() / "state/funkhausplayer")) {
    if (entry.path().extension() == ".unsaved") std::filesystem::resize_file(entry.path(), 40);
  }
  Start(kStationsBefore);
  EXPECT_EQ(Form().StatusLine.Caption(),
            u"Die Sicherung nicht gespeicherter Einträge ist unlesbar und wurde beiseitegelegt.");
  EXPECT_FALSE(IsKept());
  Run([this] {
    EXPECT_EQ(Column(), QStringList({"Radio A"}));
    program_->Window().close();
  });
}

}  // namespace
}  // namespace program_test
