// Later starts of the program while one runs: real processes, and the program of the test among them.
#include <poll.h>

#include <algorithm>
#include <csignal>

#include "ports/start_requests.h"
#include "tests/program/later_start.h"
#include "tests/program/program_rig.h"

namespace program_test {
namespace {

using test_support::ChildProcess;
using test_support::RunResult;

constexpr const char* kStations =
    "[Radio A]\r\nStation=Radio A\r\nLink=/fehlt.mp3\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\n";

class SecondStart : public ProgramRig {
 protected:
  /// Lets this program run until the other start has ended.
  static RunResult Serve(std::future<RunResult> other) {
    constexpr int kDeadline = 20'000;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return other.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, kDeadline));
    return other.get();
  }
  [[nodiscard]] bool IsAsked() const {
    pollfd ready{entrance_->Requests()->Descriptor(), POLLIN, 0};
    return ::poll(&ready, 1, 0) == 1;
  }
  RunResult StartAnother() { return Serve(surroundings_.StartToEndMeanwhile()); }

  Surroundings surroundings_{folder_};
};

TEST_F(SecondStart, BringsTheFirstWindowToTheFrontAndEndsWithExitCodeZero) {
  Start(kStations);
  EXPECT_EQ(Run([this] {
              program_->Window().showMinimized();
              EXPECT_EQ(StartAnother().exit_code, 0);
              EXPECT_FALSE(program_->Window().isMinimized());
              EXPECT_TRUE(QTest::qWaitForWindowActive(&program_->Window()));
              program_->Window().close();
            }),
            0);
}

TEST_F(SecondStart, NeedsNoScreenAndNoSessionBus) {
  Start(kStations);
  surroundings_ = surroundings_.With("QT_QPA_PLATFORM", "xcb")
                      .With("DISPLAY", ":nonexistent")
                      .With("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  Run([this] {
    EXPECT_EQ(StartAnother().exit_code, 0);
    program_->Window().close();
  });
}

TEST_F(SecondStart, LeavesTheFilesOfTheFirstAlone) {
  Start(kStations);
  Run([this] {
    ClickRow("Radio A");
    EXPECT_EQ(StartAnother().exit_code, 0);
    Click("Check2");
    EXPECT_EQ(StartAnother().exit_code, 0);
    program_->Window().close();
  });
  EXPECT_NE(Stations().find("Favorit=1"), std::string::npos) << Stations();
}

TEST_F(SecondStart, BringsTheDialogToTheFrontThatStandsOpen) {
  Start(kStations);
  Expect([this](QWidget& dialog) {
    program_->Window().activateWindow();
    EXPECT_EQ(StartAnother().exit_code, 0);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    PressButton(dialog, "CommandButton2");
  });
  Run([this] {
    Click("CommandButton2");
    program_->Window().close();
  });
  EXPECT_TRUE(NothingExpected());
}

TEST_F(SecondStart, InTheMomentInWhichTheFirstClosesTakesItsPlace) {
  Start(kStations);
  ChildProcess later;
  const auto unload = Form().form.Unloaded.Subscribe([&] {
    later = surroundings_.Start();
    EXPECT_TRUE(test_support::WaitUntil([this] { return IsAsked(); }, std::chrono::seconds(30)));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !IsAsked(); })) << "refused";
    EXPECT_TRUE(later.Running());
  });
  Run([this] { program_->Window().close(); });
  program_.reset();
  EXPECT_TRUE(later.Running());
  entrance_.reset();
  EXPECT_TRUE(surroundings_.ComesUp());
  EXPECT_TRUE(later.Running());
  EXPECT_TRUE(EndsOrderly(later));
}

TEST(StartsBesideOneAnother, AfterAKilledOneTheNextRuns) {
  const test_support::TempFolder folder;
  const Surroundings surroundings(folder);
  for (int round = 0; round < 2; ++round) {
    ChildProcess first = surroundings.Start();
    ASSERT_TRUE(surroundings.ComesUp());
    ASSERT_TRUE(first.Running());
    first.Kill();
  }
  ChildProcess last = surroundings.Start();
  EXPECT_TRUE(surroundings.ComesUp());
  EXPECT_TRUE(EndsOrderly(last));
}

TEST(StartsBesideOneAnother, OneThatHangsIsReportedAfterFiveSeconds) {
  const test_support::TempFolder folder;
  const Surroundings surroundings(folder);
  ChildProcess first = surroundings.Start();
  ASSERT_TRUE(surroundings.ComesUp());
  first.Signal(SIGSTOP);
  const auto before = std::chrono::steady_clock::now();
  const RunResult second = surroundings.StartToEnd();
  const auto waited = std::chrono::steady_clock::now() - before;
  EXPECT_EQ(second.exit_code, 1);
  EXPECT_GE(waited, std::chrono::seconds(5)) << "the first one had no time to answer";
  EXPECT_LT(waited, std::chrono::seconds(15)) << "with its own start, which takes long on a busy machine";
  EXPECT_EQ(second.output, "Funkhausplayer läuft bereits, antwortet aber nicht.\n");
  first.Signal(SIGCONT);
  EXPECT_TRUE(surroundings.ComesUp()) << "the first one answers again";
  EXPECT_TRUE(EndsOrderly(first));
}

TEST(StartsBesideOneAnother, OneThatHangsAndGoesIsReplacedByTheOneThatWaits) {
  const test_support::TempFolder folder;
  const Surroundings surroundings(folder);
  ChildProcess first = surroundings.Start();
  ASSERT_TRUE(surroundings.ComesUp());
  first.Signal(SIGSTOP);
  ChildProcess second = surroundings.Start();
  first.Kill();
  EXPECT_TRUE(surroundings.ComesUp());
  EXPECT_TRUE(second.Running());
  EXPECT_TRUE(EndsOrderly(second));
}

TEST(StartsBesideOneAnother, OfSeveralAtTheSameTimeOneRuns) {
  const test_support::TempFolder folder;
  const Surroundings surroundings(folder);
  std::vector<ChildProcess> starts;
  for (int start = 0; start < 4; ++start) starts.push_back(surroundings.Start());
  const auto running = [&] {
    return std::count_if(starts.begin(), starts.end(), [](ChildProcess& start) { return start.Running(); });
  };
  EXPECT_TRUE(test_support::WaitUntil([&] { return running() == 1; }, std::chrono::seconds(30)));
  EXPECT_TRUE(surroundings.ComesUp());
  EXPECT_EQ(running(), 1);
}

TEST(StartsBesideOneAnother, OfOtherSettingsFoldersRunIndependently) {
  const test_support::TempFolder folder;
  const test_support::TempFolder other_folder;
  const Surroundings surroundings(folder);
  const Surroundings other = surroundings.With("APPDATA", other_folder.Path());
  ChildProcess first = surroundings.Start();
  ASSERT_TRUE(surroundings.ComesUp());
  ChildProcess second = other.Start();
  EXPECT_TRUE(other.ComesUp(2));
  EXPECT_TRUE(first.Running());
  EXPECT_TRUE(EndsOrderly(second));
  EXPECT_TRUE(surroundings.ComesUp());
  EXPECT_TRUE(EndsOrderly(first));
}

TEST(StartsBesideOneAnother, OfAFolderMovedToTheSamePlaceAreTheSame) {
  const test_support::TempFolder folder;
  const test_support::TempFolder mover;
  const Surroundings surroundings(folder);
  ChildProcess first = surroundings.Start();
  ASSERT_TRUE(surroundings.ComesUp());
  mover.Write("Ordnerzentrale/Opt.ini", "[Pfad3]\r\nIsUserIniChange=1\r\nUserIniPfad=" +
                                            (folder.Path() / "Ordnerzentrale").string() + "/\r\n");
  EXPECT_EQ(surroundings.With("APPDATA", mover.Path()).StartToEnd().exit_code, 0);
  EXPECT_TRUE(EndsOrderly(first));
}

TEST(StartsBesideOneAnother, WithoutAPlaceForTheLockEachRuns) {
  const test_support::TempFolder folder;
  const Surroundings surroundings = Surroundings(folder).With("XDG_STATE_HOME", "/proc/nonexistent");
  ChildProcess first = surroundings.Start();
  ChildProcess second = surroundings.Start();
  EXPECT_TRUE(HandlesSignals(first));
  EXPECT_TRUE(HandlesSignals(second));
  EXPECT_TRUE(EndsOrderly(first));
  EXPECT_TRUE(EndsOrderly(second));
}

}  // namespace
}  // namespace program_test
