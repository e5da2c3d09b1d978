#include "platform/posix/start_argument.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

TEST(StartArgumentTest, RelativePathIsMadeAbsolute) {
  EXPECT_EQ(StartArgument("liste.m3u", "/home/a"), "/home/a/liste.m3u");
  EXPECT_EQ(StartArgument("../b/liste.m3u", "/home/a"), "/home/a/../b/liste.m3u");
  EXPECT_EQ(StartArgument("liste.m3u", "/"), "/liste.m3u");
  EXPECT_EQ(StartArgument("50%20.m3u", "/a"), "/a/50%20.m3u") << "no address";
}

TEST(StartArgumentTest, AbsolutePathEmptyWordAndAddressStay) {
  EXPECT_EQ(StartArgument("/a/liste.m3u", "/home/a"), "/a/liste.m3u");
  EXPECT_EQ(StartArgument("", "/home/a"), "");
  EXPECT_EQ(StartArgument("http://a/%20", "/home/a"), "http://a/%20");
  EXPECT_EQ(StartArgument("liste.m3u", ""), "liste.m3u");
}

TEST(StartArgumentTest, FileAddressIsThePathThatItNames) {
  EXPECT_EQ(StartArgument("file:///a%20b/%C3%B6%FF.m3u", "/x"), "/a b/\xC3\xB6\xFF.m3u");
  EXPECT_EQ(StartArgument("FILE://localhost/a.m3u", "/x"), "/a.m3u");
  EXPECT_EQ(StartArgument("file:///100%.m3u", "/x"), "/100%.m3u");
  EXPECT_EQ(StartArgument("file:///a%00b%4", "/x"), "/a%00b%4");
  EXPECT_EQ(StartArgument("file://other/a.m3u", "/x"), "file://other/a.m3u") << "of another machine";
}

TEST(StartArgumentTest, WorkingFolderIsTheProcesssOwn) {
  const test_support::TempFolder folder;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  const std::string found = WorkingFolder();
  std::filesystem::current_path(before);
  EXPECT_TRUE(std::filesystem::equivalent(found, folder.Path()));
  EXPECT_TRUE(found.starts_with('/'));
}

TEST(StartArgumentTest, WorkingFolderThatIsGoneIsEmpty) {
  const auto before = std::filesystem::current_path();
  {
    const test_support::TempFolder folder;
    std::filesystem::current_path(folder.Path());
  }
  EXPECT_EQ(WorkingFolder(), "");
  std::filesystem::current_path(before);
}

}  // namespace
}  // namespace platform::posix
