#include "platform/posix/temporary_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>

#include "tests/platform/posix/child_process.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

constexpr mode_t kMode = 0600;

class TemporaryFileTest : public testing::Test {
 protected:
  [[nodiscard]] std::string Target(const std::string& name = "Funkhaus.ini") const {
    return folder.Path() / name;
  }
  [[nodiscard]] std::ptrdiff_t Entries() const {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  }
  /// What a program leaves behind that is killed before it has replaced the target; its path.
  std::filesystem::path Leave(const std::string& target) {
    std::optional<TemporaryFile> file;
    file.emplace(target, kMode);
    const std::filesystem::path path = file->Path();
    file.reset();
    folder.Write(path.filename(), "half");
    return path;
  }

  test_support::TempFolder folder;
};

TEST_F(TemporaryFileTest, LiesHiddenBesideItsTargetUntilItReplacesIt) {
  folder.Write("Funkhaus.ini", "before");
  TemporaryFile file(Target(), kMode);
  ASSERT_TRUE(file.IsOpen());
  EXPECT_EQ(std::filesystem::path(file.Path()).parent_path(), folder.Path());
  EXPECT_TRUE(std::filesystem::path(file.Path()).filename().string().starts_with("."));
  ASSERT_EQ(::write(file.Get(), "after", 5), 5);
  EXPECT_EQ(folder.Read("Funkhaus.ini"), "before");
  EXPECT_TRUE(file.ReplaceTarget());
  EXPECT_EQ(folder.Read("Funkhaus.ini"), "after");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(TemporaryFileTest, IsGoneWhenItDidNotReplaceItsTarget) {
  { const TemporaryFile file(Target(), kMode); }
  EXPECT_EQ(Entries(), 0);
}

TEST_F(TemporaryFileTest, HasThePermissionsThatItIsGiven) {
  const TemporaryFile file(Target(), kMode);
  struct stat status {};
  ASSERT_EQ(::stat(file.Path().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, kMode);
}

TEST_F(TemporaryFileTest, CannotBeMadeInAFolderThatDoesNotExist) {
  EXPECT_FALSE(TemporaryFile(Target("missing/x"), kMode).IsOpen());
}

TEST_F(TemporaryFileTest, TargetWithTheLongestNameHasOneToo) {
  const std::string target = Target(std::string(255, 'x'));
  TemporaryFile file(target, kMode);
  ASSERT_TRUE(file.IsOpen());
  EXPECT_TRUE(file.ReplaceTarget());
  EXPECT_TRUE(std::filesystem::exists(target));
}

TEST_F(TemporaryFileTest, TwoOfOneTargetDoNotDisturbEachOther) {
  TemporaryFile one(Target(), kMode);
  TemporaryFile other(Target(), kMode);
  EXPECT_NE(one.Path(), other.Path());
  EXPECT_TRUE(one.ReplaceTarget());
  EXPECT_TRUE(other.ReplaceTarget());
}

TEST_F(TemporaryFileTest, LeftoversOfTheTargetAreRemoved) {
  Leave(Target());
  Leave(Target());
  ASSERT_EQ(Entries(), 2);
  RemoveLeftovers(Target());
  EXPECT_EQ(Entries(), 0);
}

TEST_F(TemporaryFileTest, LeftoverOfAProgramThatWasKilledIsRemoved) {
  const auto be_killed = [&] {
    const TemporaryFile file(Target(), kMode);
    return file.IsOpen() && ::raise(SIGKILL) == 0;
  };
  EXPECT_EQ(RunInChild(be_killed), ChildResult::kBroken);
  ASSERT_EQ(Entries(), 1);
  RemoveLeftovers(Target());
  EXPECT_EQ(Entries(), 0);
}

TEST_F(TemporaryFileTest, WhatIsStillBeingWrittenStays) {
  TemporaryFile file(Target(), kMode);
  const auto remove = [&] {
    RemoveLeftovers(Target());
    return true;
  };
  EXPECT_EQ(RunInChild(remove), ChildResult::kTrue);
  remove();
  EXPECT_TRUE(file.ReplaceTarget());
}

TEST_F(TemporaryFileTest, NoneIsLostToAProgramThatTidiesUpAtTheSameTime) {
  std::atomic<bool> done = false;
  std::thread tidying([&] {
    while (!done) RemoveLeftovers(Target());
  });
  int replaced = 0;
  constexpr int kFiles = 2000;
  for (int number = 0; number < kFiles; ++number) {
    TemporaryFile file(Target(), kMode);
    if (file.IsOpen() && file.ReplaceTarget()) ++replaced;
  }
  done = true;
  tidying.join();
  EXPECT_EQ(replaced, kFiles);
}

TEST_F(TemporaryFileTest, LeftoversOfOtherTargetsStay) {
  const auto other = Leave(Target("Opt.ini"));
  RemoveLeftovers(Target());
  EXPECT_TRUE(std::filesystem::exists(other));
}

TEST_F(TemporaryFileTest, WhatOnlyLooksLikeALeftoverStays) {
  const std::string name = Leave(Target()).filename();
  std::filesystem::remove(folder.Path() / name);
  const std::string beginning = name.substr(0, name.size() - 4);
  folder.Write(beginning, "no ending");
  folder.Write(beginning + "0.tmp", "a digit too many");
  folder.Write(beginning.substr(0, beginning.size() - 1) + "x.tmp", "no digit");
  const std::string digits = beginning.substr(0, beginning.size() - 2);
  std::filesystem::create_directory(folder.Path() / (digits + "00.tmp"));
  std::filesystem::create_symlink("target", folder.Path() / (digits + "01.tmp"));
  folder.Write("target", "");
  ASSERT_EQ(::mkfifo((folder.Path() / (digits + "02.tmp")).c_str(), kMode), 0);
  RemoveLeftovers(Target());
  EXPECT_EQ(Entries(), 7);
}

}  // namespace
}  // namespace platform::posix
