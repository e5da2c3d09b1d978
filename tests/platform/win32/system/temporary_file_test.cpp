#include "platform/win32/system/temporary_file.h"

#include "platform/win32/base/windows_api.h"

#include <aclapi.h>
#include <gtest/gtest.h>
#include <sddl.h>

#include <filesystem>
#include <thread>
#include <vector>

#include "platform/win32/base/wide.h"
#include "platform/win32/system/system_path.h"
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

/// Gives everything to everybody, as an entry of the file's own.
void GrantEveryone(const std::wstring& path) {
  PSECURITY_DESCRIPTOR rights = nullptr;
  ASSERT_NE(::ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:(A;;FA;;;WD)", SDDL_REVISION_1,
                                                                   &rights, nullptr),
            0);
  EXPECT_NE(::SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights), 0);
  ::LocalFree(rights);
}

/// Whether everybody may write the file by an entry of its own.
bool GrantsEveryone(const std::wstring& path) {
  PACL entries = nullptr;
  PSECURITY_DESCRIPTOR rights = nullptr;
  ::GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &entries,
                          nullptr, &rights);
  bool grants = false;
  for (DWORD index = 0; entries != nullptr && index < entries->AceCount; ++index) {
    void* entry = nullptr;
    ::GetAce(entries, index, &entry);
    auto& allowed = *static_cast<ACCESS_ALLOWED_ACE*>(entry);
    grants |= (allowed.Mask & FILE_WRITE_DATA) != 0 && (allowed.Header.AceFlags & INHERITED_ACE) == 0 &&
              ::IsWellKnownSid(&allowed.SidStart, WinWorldSid) != 0;
  }
  ::LocalFree(rights);
  return grants;
}

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

// Its own name is longer than the target's. Wine's operations take it as it is, Windows' do not.
TEST_F(TemporaryFileTest, ItHasTheFormOfALongPathWhereTheTargetNeedsNone) {
  const std::wstring target =
      folder.Path().wstring() + L"\\" + std::wstring(235 - folder.Path().wstring().size(), L'x') + L"\\a.ini";
  std::filesystem::create_directory(std::filesystem::path(target).parent_path());
  ASSERT_EQ(SystemPath(FromWide(target)), target);
  std::wstring path;
  const auto note = [&path](const std::wstring& asked, std::uint32_t access) {
    path = asked;
    return CreateNewFile(asked, access);
  };
  EXPECT_TRUE(ReplaceFile(target, "bytes", note));
  EXPECT_TRUE(path.starts_with(L"\\\\?\\")) << std::filesystem::path(path);
  EXPECT_EQ(ReadRegularFile(target, 100).bytes, "bytes");
  EXPECT_TRUE(ReplaceFile(Target(), "bytes", note));
  EXPECT_FALSE(path.starts_with(L"\\\\?\\")) << std::filesystem::path(path);
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

TEST_F(TemporaryFileTest, AReplacementRemovesWhatAKilledOneLeft) {
  LeaveOne();
  folder.Write(leftover, "torn");
  EXPECT_TRUE(ReplaceFile(Target(), "whole"));
  EXPECT_EQ(folder.Read("a.ini"), "whole");
  EXPECT_EQ(Entries(), 1);
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

/// Creates files in a folder whose share grants nobody to change rights.
class GrantsNoRights {
 public:
  HANDLE operator()(const std::wstring& path, std::uint32_t access) {
    asked_.push_back(access);
    if ((access & WRITE_DAC) == 0) return CreateNewFile(path, access);
    ::SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  }
  /// How many requests there were, and whether each asked to change the rights.
  [[nodiscard]] std::vector<bool> Asked() const {
    std::vector<bool> asked;
    for (const std::uint32_t access : asked_) asked.push_back((access & WRITE_DAC) != 0);
    return asked;
  }

 private:
  std::vector<std::uint32_t> asked_;
};

TEST_F(TemporaryFileTest, AFolderThatGrantsNobodyToChangeRightsTakesTheFileWithItsOwn) {
  GrantsNoRights share;
  TemporaryFile temporary(Target(), AccessRights::kChange, std::ref(share));
  EXPECT_TRUE(temporary.IsOpen());
  EXPECT_EQ(share.Asked(), (std::vector{true, false}));
  EXPECT_TRUE(temporary.ReplaceTarget());
}

TEST_F(TemporaryFileTest, AnotherFailureIsNotTriedAgain) {
  int tries = 0;
  const TemporaryFile temporary(Target(), AccessRights::kChange,
                                [&tries](const std::wstring& /*path*/, std::uint32_t /*access*/) {
                                  ++tries;
                                  ::SetLastError(ERROR_DISK_FULL);
                                  return INVALID_HANDLE_VALUE;
                                });
  EXPECT_FALSE(temporary.IsOpen());
  EXPECT_EQ(tries, 1);
}

TEST_F(TemporaryFileTest, ANewFileNeedsNoRightToChangeRights) {
  GrantsNoRights share;
  EXPECT_TRUE(ReplaceFile(Target(), "new", std::ref(share)));
  EXPECT_EQ(share.Asked(), std::vector{false});
  EXPECT_EQ(folder.Read("a.ini"), "new");
}

TEST_F(TemporaryFileTest, AFileWithRightsOfItsOwnIsSavedWhereNobodyMayChangeRights) {
  folder.Write("a.ini", "before");
  GrantEveryone(Target());
  GrantsNoRights share;
  EXPECT_TRUE(ReplaceFile(Target(), "after", std::ref(share)));
  EXPECT_EQ(share.Asked(), (std::vector{true, false}));
  EXPECT_EQ(folder.Read("a.ini"), "after");
  EXPECT_FALSE(GrantsEveryone(Target()));
}

TEST_F(TemporaryFileTest, RightsThatWereSetForTheFileAreKept) {
  folder.Write("a.ini", "before");
  EXPECT_FALSE(GrantsEveryone(Target()));
  GrantEveryone(Target());
  EXPECT_TRUE(ReplaceFile(Target(), "after"));
  EXPECT_EQ(folder.Read("a.ini"), "after");
  EXPECT_TRUE(GrantsEveryone(Target()));
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
