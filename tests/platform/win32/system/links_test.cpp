// Symbolic links to files. Wine shows none as one, so the test does: what the system says of a name is given.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/win32/system/whole_file.h"
#include "tests/platform/win32/replaced_import.h"
#include "tests/support/temp_folder.h"

// Where this program finds the system's functions.
extern "C" {
extern decltype(&GetFileAttributesW) __imp_GetFileAttributesW;
extern decltype(&GetFileAttributesExW) __imp_GetFileAttributesExW;
extern decltype(&GetFinalPathNameByHandleW) __imp_GetFinalPathNameByHandleW;
}

namespace platform::win32 {
namespace {

using test_support::ReplacedImport;

std::wstring link_path;
std::wstring link_target;
const auto original_attributes = __imp_GetFileAttributesW;
const auto original_known = __imp_GetFileAttributesExW;

DWORD WINAPI AttributesWithLink(const wchar_t* path) {
  return path == link_path ? FILE_ATTRIBUTE_REPARSE_POINT : original_attributes(path);
}

BOOL WINAPI KnownWithLink(const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* known) {
  if (path != link_path) return original_known(path, level, known);
  auto& found = *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(known);
  found = {};
  found.dwFileAttributes = FILE_ATTRIBUTE_REPARSE_POINT;
  return TRUE;
}

DWORD WINAPI LeadToTarget(HANDLE /*file*/, wchar_t* buffer, DWORD size, DWORD /*flags*/) {
  const std::wstring path = L"\\\\?\\" + link_target;
  if (size <= path.size()) return static_cast<DWORD>(path.size() + 1);
  std::copy_n(path.c_str(), path.size() + 1, buffer);
  return static_cast<DWORD>(path.size());
}

class Win32LinksTest : public testing::Test {
 protected:
  Win32LinksTest() {
    link_path = (folder_.Path() / "link.ini").wstring();
    link_target = (folder_.Path() / "sub" / "target.ini").wstring();
  }

  const test_support::TempFolder folder_;
  const ReplacedImport<decltype(&GetFileAttributesW)> attributes_{__imp_GetFileAttributesW,
                                                                  &AttributesWithLink};
  const ReplacedImport<decltype(&GetFileAttributesExW)> known_{__imp_GetFileAttributesExW, &KnownWithLink};
  const ReplacedImport<decltype(&GetFinalPathNameByHandleW)> final_{__imp_GetFinalPathNameByHandleW,
                                                                    &LeadToTarget};
};

TEST_F(Win32LinksTest, LinkStaysAndItsTargetIsReplaced) {
  folder_.Write("link.ini", "link");
  folder_.Write("sub/target.ini", "before");
  EXPECT_TRUE(ReplaceFile(link_path, "after"));
  EXPECT_EQ(folder_.Read("sub/target.ini"), "after");
  EXPECT_EQ(folder_.Read("link.ini"), "link");
}

TEST_F(Win32LinksTest, LinkThatLeadsNowhereIsNotReplaced) {
  folder_.Write("sub/other", "");
  EXPECT_FALSE(ReplaceFile(link_path, "after"));
  EXPECT_EQ(folder_.Read("link.ini"), "<missing>");
  EXPECT_EQ(folder_.Read("sub/target.ini"), "<missing>");
}

TEST_F(Win32LinksTest, StampOfALinkIsThatOfItsTarget) {
  folder_.Write("link.ini", "bytes of the target");
  const auto [reading, state] = StateOf(link_path);
  EXPECT_EQ(reading, ProfileReading::kRead);
  EXPECT_EQ(state.stamp, ReadRegularFile(link_path, 100).state.stamp);
}

TEST_F(Win32LinksTest, LinkThatLeadsNowhereIsAMissingFile) {
  EXPECT_EQ(StateOf(link_path).first, ProfileReading::kMissing);
}

}  // namespace
}  // namespace platform::win32
