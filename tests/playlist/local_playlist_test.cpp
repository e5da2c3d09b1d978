#include "playlist/local_playlist.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/support/memory_files.h"
#include "tests/support/plain_text_conversion.h"

namespace playlist {
namespace {

using app::Text;

const Text kPlaylist = u"C:\\Musik\\liste.m3u";

class LocalPlaylistTest : public testing::Test {
 protected:
  Text Entry(const std::string& bytes, std::int32_t number) {
    files_.files[kPlaylist] = bytes;
    return GetLocalPlaylistEntry(files_, conversion_, kPlaylist, number);
  }

  test_support::MemoryFiles files_;
  test_support::PlainTextConversion conversion_;
};

TEST_F(LocalPlaylistTest, TheExtensionShowsThatALinkNamesAPlaylistFile) {
  for (const Text link : {u"liste.m3u", u"D:\\Listen\\Meine.M3U", u"a.txt", u".TXT"}) {
    EXPECT_TRUE(IsPlaylistFileName(conversion_, link)) << testing::PrintToString(link);
  }
  for (const Text link : {u"liste.m3u8", u"liste.pls", u"m3u", u"http://radio.example/a.m3u?x=1", u""}) {
    EXPECT_FALSE(IsPlaylistFileName(conversion_, link)) << testing::PrintToString(link);
  }
}

TEST_F(LocalPlaylistTest, CountsTheHttpLinesFromOne) {
  const std::string bytes = "#EXTM3U\n#EXTINF:-1,Eins\nhttp://1\n\n#EXTINF:-1,Zwei\nhttps://2\n";
  EXPECT_EQ(Entry(bytes, 1), u"http://1");
  EXPECT_EQ(Entry(bytes, 2), u"https://2");
}

TEST_F(LocalPlaylistTest, ANumberThatDoesNotExistGivesTheLastEntry) {
  const std::string bytes = "http://1\nhttp://2\n";
  EXPECT_EQ(Entry(bytes, 3), u"http://2");
  EXPECT_EQ(Entry(bytes, 0), u"http://2");
  EXPECT_EQ(Entry(bytes, -1), u"http://2");
  EXPECT_EQ(Entry(bytes, std::numeric_limits<std::int32_t>::max()), u"http://2");
}

TEST_F(LocalPlaylistTest, ALineThatNamesAnExistingFileOrFolderIsAnEntry) {
  files_.files[u"D:\\Lied.mp3"] = "";
  files_.folders = {u"D:\\Album\\"};
  const std::string bytes = "D:\\Fehlt.mp3\nD:\\Lied.mp3\nD:\\Album\nhttp://1\n";
  EXPECT_EQ(Entry(bytes, 1), u"D:\\Lied.mp3");
  EXPECT_EQ(Entry(bytes, 2), u"D:\\Album");
  EXPECT_EQ(Entry(bytes, 3), u"http://1");
}

TEST_F(LocalPlaylistTest, OnlySmallLettersMakeAnHttpLine) {
  EXPECT_EQ(Entry("HTTP://1\n http://2\nhttp\n", 1), u"http");
}

TEST_F(LocalPlaylistTest, ACrLfPairAnywhereSplitsAtCrLfOnly) {
  EXPECT_EQ(Entry("http://1\r\nhttp://2\r\n", 2), u"http://2");
  EXPECT_EQ(Entry("http://1\nhttp://2\r\nhttp://3", 1), u"http://1\nhttp://2");
}

TEST_F(LocalPlaylistTest, WithoutACrLfPairLinesEndAtLineFeeds) {
  EXPECT_EQ(Entry("http://1\nhttp://2\r", 2), u"http://2\r");
}

TEST_F(LocalPlaylistTest, AnExportedFileIsOneLineForIt) {
  // The export ends in LF CR LF: the pair decides, and everything before it is one line that is no entry.
  EXPECT_EQ(Entry("#EXTM3U\n#EXTINF:-1,Eins\nhttp://1\n\r\n", 1), u"");
}

TEST_F(LocalPlaylistTest, AFileWithoutEntriesGivesNothing) {
  EXPECT_EQ(Entry("#EXTM3U\n\n", 1), u"");
  EXPECT_EQ(Entry("", 1), u"");
}

TEST_F(LocalPlaylistTest, AFileThatCannotBeReadGivesNothing) {
  EXPECT_EQ(GetLocalPlaylistEntry(files_, conversion_, u"C:\\fehlt.m3u", 1), u"");
}

TEST_F(LocalPlaylistTest, AnUnreachedNumberIsNotLookedForBehindTheEntry) {
  Entry("http://1\nD:\\a\nD:\\b\n", 1);
  EXPECT_TRUE(files_.existence_questions.empty());
}

TEST_F(LocalPlaylistTest, ABinaryFileDoesNoHarm) {
  std::string bytes;
  for (int number = 0; number < 100000; ++number) bytes.push_back(static_cast<char>(number * 7919 >> 3));
  EXPECT_EQ(Entry(bytes, 1), u"");
}

}  // namespace
}  // namespace playlist
