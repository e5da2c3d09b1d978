#include "platform/win32/system/file_rights.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <sddl.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace platform::win32 {
namespace {

/// A descriptor written in the system's language for them: "D:" and flags ("P": the folder's do not count),
/// entries of which "ID" marks those from a folder. "WD" is everyone, "BU" users, "BA" administrators.
FileRights Rights(const wchar_t* text) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ULONG size = 0;
  EXPECT_NE(::ConvertStringSecurityDescriptorToSecurityDescriptorW(text, SDDL_REVISION_1, &descriptor, &size),
            0);
  const auto* const bytes = static_cast<const std::byte*>(descriptor);
  FileRights rights(std::vector<std::byte>(bytes, bytes + size));
  ::LocalFree(descriptor);
  return rights;
}

/// A descriptor that names no entries, not even none.
FileRights RightsForEverybody() {
  SECURITY_DESCRIPTOR descriptor{};
  ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
  ::SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE);
  std::vector<std::byte> relative(1000);
  auto size = static_cast<DWORD>(relative.size());
  EXPECT_NE(::MakeSelfRelativeSD(&descriptor, relative.data(), &size), 0);
  return FileRights(std::move(relative));
}

TEST(FileRightsTest, RightsOfTheFolderAreNotTheFilesOwn) {
  EXPECT_FALSE(Rights(L"D:AI(A;ID;FA;;;BA)(A;ID;FR;;;WD)").AreItsOwn());
  EXPECT_FALSE(Rights(L"O:BAG:BA").AreItsOwn());
  EXPECT_FALSE(FileRights({}).AreItsOwn());
  EXPECT_FALSE(FileRights::Of(L"C:\\no such file").AreItsOwn());
}

TEST(FileRightsTest, AnEntryOfTheFilesAndAFolderThatDoesNotCountAre) {
  EXPECT_TRUE(Rights(L"D:AI(A;;FR;;;BU)(A;ID;FA;;;BA)").AreItsOwn());
  EXPECT_TRUE(Rights(L"D:P(A;;FA;;;BA)").AreItsOwn());
  EXPECT_TRUE(Rights(L"D:P").AreItsOwn());
  EXPECT_TRUE(RightsForEverybody().AreItsOwn());
}

/// A list in the same language.
std::string TextOf(void* list) {
  if (list == nullptr) return "everything";
  SECURITY_DESCRIPTOR descriptor{};
  ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
  ::SetSecurityDescriptorDacl(&descriptor, TRUE, static_cast<PACL>(list), FALSE);
  char* written = nullptr;
  ::ConvertSecurityDescriptorToStringSecurityDescriptorA(&descriptor, SDDL_REVISION_1,
                                                         DACL_SECURITY_INFORMATION, &written, nullptr);
  std::string text = written == nullptr ? "" : written;
  ::LocalFree(written);
  return text;
}

/// What is set for a file that gets these rights.
std::string Given(const FileRights& rights) {
  std::string given = "nothing";
  const auto note = [&given](HANDLE /*file*/, FoldersRights folders, void* list) {
    given = (folders == FoldersRights::kCount ? "besides " : "only ") + TextOf(list);
    return true;
  };
  EXPECT_TRUE(rights.GiveTo(nullptr, note));
  return given;
}

TEST(FileRightsTest, OnlyTheEntriesOfTheFileAreAddedToThoseOfTheNewFolder) {
  EXPECT_EQ(Given(Rights(L"D:AI(D;;FW;;;BU)(A;ID;FA;;;BA)(A;;FR;;;WD)(A;ID;FR;;;BU)")),
            "besides D:(D;;FW;;;BU)(A;;FR;;;WD)");
  EXPECT_EQ(Given(RightsForEverybody()), "besides everything");
  EXPECT_EQ(Given(Rights(L"D:AI(A;ID;FA;;;BA)")), "nothing");
}

TEST(FileRightsTest, WhereTheFoldersDoNotCountTheWholeListIsGiven) {
  EXPECT_EQ(Given(Rights(L"D:P(A;;FA;;;BA)(A;;FR;;;BU)")), "only D:(A;;FA;;;BA)(A;;FR;;;BU)");
  EXPECT_EQ(Given(Rights(L"D:P")), "only D:");
}

TEST(FileRightsTest, ARefusalIsReported) {
  const auto refuse = [](HANDLE /*file*/, FoldersRights /*folders*/, void* /*list*/) { return false; };
  EXPECT_FALSE(Rights(L"D:P(A;;FA;;;BA)").GiveTo(nullptr, refuse));
  EXPECT_FALSE(SetRights(nullptr, FoldersRights::kCount, nullptr));
}

}  // namespace
}  // namespace platform::win32
