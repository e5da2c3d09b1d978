#include "platform/win32/system/temporary_file.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "platform/win32/system/whole_file.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

class TemporaryFileTest : public testing::Test {
 protected:
  [[nodiscard]] std::ptrdiff_t Entries() const {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  }
  [[nodiscard]] std::wstring Target() const { return (folder.Path() / "a.ini").wstring(); }
  /// What a program leaves behind that is killed before the file has its final name.
  void LeaveOne() {
    const TemporaryFile temporary(Target());
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      leftover = entry.path().filename().string();
    }
  }

  test_support::TempFolder folder;
  std::string leftover;
};

TEST_F(TemporaryFileTest, ItIsBesideItsTargetAndIsRemovedUnlessItReplacesIt) {
  {
    const TemporaryFile temporary(Target());
    EXPECT_TRUE(temporary.IsOpen());
    EXPECT_EQ(Entries(), 1);
  }
  EXPECT_EQ(Entries(), 0);
}

TEST_F(TemporaryFileTest, ItReplacesItsTargetInOneStep) {
  folder.Write("a.ini", "before");
  {
    TemporaryFile temporary(Target());
    std::size_t written = 0;
    EXPECT_TRUE(WriteAll(temporary.Get(), "after", written));
    EXPECT_EQ(folder.Read("a.ini"), "before");
    EXPECT_TRUE(temporary.ReplaceTarget());
  }
  EXPECT_EQ(folder.Read("a.ini"), "after");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(TemporaryFileTest, AMissingFolderTakesNone) {
  const TemporaryFile temporary(Target() + L"\\x.ini");
  EXPECT_FALSE(temporary.IsOpen());
}

TEST_F(TemporaryFileTest, LeftoversOfTheSameTargetAreRemovedAndNothingElse) {
  LeaveOne();
  folder.Write(leftover, "torn");
  folder.Write(".funkhaus-0000000000000000-0000000000000000.tmp", "of another target");
  folder.Write("a.ini", "");
  RemoveLeftovers(Target());
  EXPECT_EQ(folder.Read(leftover), "<missing>");
  EXPECT_EQ(Entries(), 2);
}

TEST_F(TemporaryFileTest, OneThatIsInUseIsNoLeftover) {
  {
    TemporaryFile temporary(Target());
    RemoveLeftovers(Target());
    EXPECT_EQ(Entries(), 1);
    EXPECT_TRUE(temporary.ReplaceTarget());
  }
  EXPECT_EQ(folder.Read("a.ini"), "");
}

TEST_F(TemporaryFileTest, AReplacementWaitsForAProgramThatHasTheTargetOpenForAMoment) {
  folder.Write("a.ini", "before");
  OwnedHandle reader(
      ::CreateFileW(Target().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(reader.IsOpen());
  std::thread other([&reader] {
    ::Sleep(100);
    reader.Close();
  });
  EXPECT_TRUE(ReplaceFile(Target(), "after"));
  other.join();
  EXPECT_EQ(folder.Read("a.ini"), "after");
}

TEST_F(TemporaryFileTest, AReaderWaitsForAProgramThatKeepsTheFileToItselfForAMoment) {
  folder.Write("a.ini", "bytes");
  OwnedHandle writer(::CreateFileW(Target().c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(writer.IsOpen());
  std::thread other([&writer] {
    ::Sleep(20);
    writer.Close();
  });
  const ProfileBytes read = ReadRegularFile(Target(), 100);
  other.join();
  EXPECT_EQ(read.reading, ProfileReading::kRead);
  EXPECT_EQ(read.bytes, "bytes");
}

TEST_F(TemporaryFileTest, AReadOnlyFileIsWhatItWas) {
  folder.Write("a.ini", "before");
  ::SetFileAttributesW(Target().c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(ReplaceFile(Target(), "after"));
  ::SetFileAttributesW(Target().c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(folder.Read("a.ini"), "before");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(TemporaryFileTest, AHiddenFileStaysHidden) {
  folder.Write("a.ini", "before");
  ::SetFileAttributesW(Target().c_str(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_TRUE(ReplaceFile(Target(), "after"));
  EXPECT_NE(::GetFileAttributesW(Target().c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

}  // namespace
}  // namespace platform::win32
