#include "platform/win32/system/users_guide.h"

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

TEST(Win32UsersGuideTest, GuideLiesBesideTheProgram) {
  const test_support::TempFolder folder;
  EXPECT_EQ(UsersGuide(folder.TextPath()), u"") << "there is none yet";
  folder.Write("Handbuch.html", "<html></html>");
  EXPECT_EQ(UsersGuide(folder.TextPath()), folder.TextPath("Handbuch.html"));
  EXPECT_EQ(UsersGuide(folder.TextPath() + u"\\"), folder.TextPath("Handbuch.html"));
}

TEST(Win32UsersGuideTest, FolderOfThatNameIsNoGuide) {
  const test_support::TempFolder folder;
  folder.Write("Handbuch.html/x", "");
  EXPECT_EQ(UsersGuide(folder.TextPath()), u"");
}

}  // namespace
}  // namespace platform::win32
