#include "recorder/music_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"

namespace recorder {
namespace {

using testing::ElementsAre;

TEST(MusicFolder, RecordingsGoIntoTheProgramsFolderInTheUsersMusicFolder) {
  test_support::FakeEnvironment environment;
  EXPECT_EQ(RecordingFolder(environment), u"C:\\Musik\\Funkhausplayer");
  environment.music_folder = u"C:\\";
  EXPECT_EQ(RecordingFolder(environment), u"C:\\Funkhausplayer");
}

TEST(MusicFolder, EveryMissingLevelIsMade) {
  test_support::MemoryFiles files;
  EXPECT_TRUE(MakeFolder(files, u"\\a\\b\\c"));
  EXPECT_THAT(files.created_folders, ElementsAre(u"\\a", u"\\a\\b", u"\\a\\b\\c"));
  EXPECT_TRUE(MakeFolder(files, u"\\a\\b\\c"));
  EXPECT_EQ(files.created_folders.size(), 3U);
  files.can_create_folders = false;
  EXPECT_FALSE(MakeFolder(files, u"\\d"));
}

}  // namespace
}  // namespace recorder
