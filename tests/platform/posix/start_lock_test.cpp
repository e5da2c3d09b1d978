#include "platform/posix/start_lock.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/platform/posix/child_process.h"
#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

class StartLockTest : public testing::Test {
 protected:
  using State = StartLock::State;
  test_support::TempFolder folder_;
  const std::string path_ = folder_.Path() / "x.lock";
};

TEST_F(StartLockTest, IsHeldByOneAtATimeUntilItGoes) {
  StartLock second(path_);
  {
    StartLock first(path_);
    EXPECT_EQ(first.Try(), State::kHeld);
    EXPECT_EQ(first.Try(), State::kHeld) << "asking again changes nothing";
    EXPECT_EQ(second.Try(), State::kTaken);
  }
  EXPECT_EQ(second.Try(), State::kHeld);
}

TEST_F(StartLockTest, IsTakenByAnotherProcessToo) {
  StartLock lock(path_);
  ASSERT_EQ(lock.Try(), State::kHeld);
  EXPECT_EQ(RunInChild([this] { return StartLock(path_).Try() == State::kTaken; }), ChildResult::kTrue);
}

TEST_F(StartLockTest, OfAProcessThatWasKilledIsFree) {
  const test_support::TempFolder sign;
  const std::string held = sign.Path() / "held";
  const pid_t child = ::fork();
  if (child == 0) {
    StartLock lock(path_);
    if (lock.Try() == State::kHeld) ::mkdir(held.c_str(), 0700);
    while (true) ::pause();
  }
  ASSERT_TRUE(
      test_support::WaitUntil([&] { return std::filesystem::exists(held); }, std::chrono::seconds(20)));
  StartLock lock(path_);
  EXPECT_EQ(lock.Try(), State::kTaken);
  ::kill(child, SIGKILL);
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  EXPECT_EQ(lock.Try(), State::kHeld);
}

TEST_F(StartLockTest, FileThatWasLeftBehindIsNoLock) {
  folder_.Write("x.lock", "whatever");
  EXPECT_EQ(StartLock(path_).Try(), State::kHeld);
  EXPECT_EQ(folder_.Read("x.lock"), "whatever");
}

TEST_F(StartLockTest, SurvivesTheDeletionOfItsFileByHand) {
  StartLock first(path_);
  ASSERT_EQ(first.Try(), State::kHeld);
  StartLock second(path_);
  ASSERT_EQ(second.Try(), State::kTaken);
  std::filesystem::remove(path_);
  // There is no file any more that could be locked for both; the one who comes now holds the new one.
  EXPECT_EQ(second.Try(), State::kHeld);
  EXPECT_EQ(StartLock(path_).Try(), State::kTaken);
  EXPECT_EQ(first.Try(), State::kHeld) << "it releases nothing to ask again";
}

TEST_F(StartLockTest, IsImpossibleWhereTheFileCannotBeMade) {
  EXPECT_EQ(StartLock(folder_.Path() / "missing" / "x.lock").Try(), State::kImpossible);
  std::filesystem::create_directory(path_);
  EXPECT_EQ(StartLock(path_).Try(), State::kImpossible) << "a folder of that name";
  std::filesystem::create_symlink("elsewhere", folder_.Path() / "link.lock");
  EXPECT_EQ(StartLock(folder_.Path() / "link.lock").Try(), State::kImpossible) << "a link";
  EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "elsewhere"));
}

TEST_F(StartLockTest, IsImpossibleInAFolderThatIsReadOnly) {
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0555));
  EXPECT_EQ(RunWithoutRights([this] { return StartLock(path_).Try() == State::kImpossible; }),
            ChildResult::kTrue);
}

}  // namespace
}  // namespace platform::posix
