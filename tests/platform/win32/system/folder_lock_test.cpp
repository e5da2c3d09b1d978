#include "platform/win32/system/folder_lock.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

#include "platform/win32/system/system_path.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

TEST(Win32FolderLockTest, AnotherThreadWaitsUntilTheLockIsReleased) {
  const test_support::TempFolder folder;
  std::atomic<bool> is_released = false;
  std::atomic<bool> was_released_first = false;
  std::thread other;
  {
    const FolderLock lock(folder.Path().wstring() + L"\\");
    EXPECT_EQ(lock.Get(), disk::FolderLocking::kHeld);
    other = std::thread([&] {
      const FolderLock second(folder.Path().wstring());
      EXPECT_EQ(second.Get(), disk::FolderLocking::kHeld);
      was_released_first = is_released.load();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    is_released = true;
  }
  other.join();
  EXPECT_TRUE(was_released_first);
}

TEST(Win32FolderLockTest, WaitingEndsAfterFiveSeconds) {
  const test_support::TempFolder folder;
  const FolderLock lock(folder.Path().wstring());
  disk::FolderLocking state = disk::FolderLocking::kHeld;
  std::thread([&] { state = FolderLock(folder.Path().wstring()).Get(); }).join();
  EXPECT_EQ(state, disk::FolderLocking::kBusy);
}

TEST(Win32FolderLockTest, OtherFoldersHaveLocksOfTheirOwn) {
  const test_support::TempFolder folder;
  const test_support::TempFolder another;
  const FolderLock lock(folder.Path().wstring());
  disk::FolderLocking state = disk::FolderLocking::kBusy;
  std::thread([&] { state = FolderLock(another.Path().wstring()).Get(); }).join();
  EXPECT_EQ(state, disk::FolderLocking::kHeld);
}

TEST(Win32FolderLockTest, WhereTheSystemMakesNoLockWorkContinuesWithoutOne) {
  const test_support::TempFolder folder;
  const std::wstring path = folder.Path().wstring();
  const std::wstring name = L"Global\\Funkhausplayer-folder-" + NumberOf(ResolvedPath(path).value());
  const OwnedHandle another_kind(::CreateEventW(nullptr, FALSE, FALSE, name.c_str()));
  ASSERT_TRUE(another_kind.IsOpen());
  EXPECT_EQ(FolderLock(path).Get(), disk::FolderLocking::kHeld);
}

TEST(Win32FolderLockTest, AMissingFolderAndAFileHaveNone) {
  const test_support::TempFolder folder;
  folder.Write("file", "");
  EXPECT_EQ(FolderLock((folder.Path() / "missing").wstring()).Get(), disk::FolderLocking::kNoFolder);
  EXPECT_EQ(FolderLock((folder.Path() / "file").wstring()).Get(), disk::FolderLocking::kNoFolder);
}

}  // namespace
}  // namespace platform::win32
