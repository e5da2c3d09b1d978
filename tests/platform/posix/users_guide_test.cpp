#include "platform/posix/users_guide.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

class UsersGuidePlace : public ::testing::Test {
 protected:
  [[nodiscard]] std::string Folder(const std::string& name) const { return (root_.Path() / name).string(); }
  test_support::TempFolder root_;
};

TEST_F(UsersGuidePlace, InstalledGuideIsFoundFromTheProgramsFolder) {
  const auto guide = root_.Write("usr/share/doc/funkhausplayer/handbuch.md", "# Handbuch");
  root_.Write("usr/lib/funkhausplayer/funkhausplayer", "");
  EXPECT_EQ(UsersGuide(Folder("usr/lib/funkhausplayer")), guide.string());
  EXPECT_EQ(UsersGuide(Folder("usr/lib/funkhausplayer/")), guide.string());
}

TEST_F(UsersGuidePlace, ProgramInABuildFolderHasTheSourceTreesGuide) {
  const auto guide = root_.Write("docs/handbuch.md", "# Handbuch");
  root_.Write("build/debug/bin/funkhausplayer", "");
  EXPECT_EQ(UsersGuide(Folder("build/debug/bin")), guide.string());
}

TEST_F(UsersGuidePlace, WithoutAGuideThereIsNone) {
  root_.Write("build/debug/bin/funkhausplayer", "");
  EXPECT_EQ(UsersGuide(Folder("build/debug/bin")), "");
  EXPECT_EQ(UsersGuide(""), "");
  EXPECT_EQ(UsersGuide("/"), "");
}

TEST_F(UsersGuidePlace, FolderOfThatNameIsNoGuide) {
  root_.Write("docs/handbuch.md/x", "");
  root_.Write("build/debug/bin/funkhausplayer", "");
  EXPECT_EQ(UsersGuide(Folder("build/debug/bin")), "");
}

}  // namespace
}  // namespace platform::posix
