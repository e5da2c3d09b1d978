// Export, import and the local playlist, together with files on a disk.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "playlist/local_playlist.h"
#include "playlist/m3u_export.h"
#include "playlist/m3u_import.h"
#include "tests/support/fake_notices.h"
#include "tests/support/fakes.h"
#include "tests/support/plain_disk.h"
#include "tests/support/plain_text_conversion.h"
#include "tests/support/temp_folder.h"

namespace playlist {
namespace {

using app::Text;

class M3uOnDiskTest : public testing::Test {
 protected:
  M3uOnDiskTest() {
    filtered_.SetVisible(false);
    AddStation(u"Radio Köln", u"http://1");
    AddStation(u"Zwei", u"");
  }

  void AddStation(const Text& name, const Text& link) {
    controls::ListRow row;
    row.cells.Set(0, name);
    row.cells.Set(2, link);
    full_.AddRow(row);
  }
  void Import(const Text& path, platform::MessageBoxAnswer answer = platform::MessageBoxAnswer::kYes) {
    dialogs_.answers = {answer};
    import_.ImportM3uFile(path);
  }

  test_support::TempFolder folder_;
  test_support::PlainTextConversion conversion_;
  test_support::PlainNativePaths paths_;
  test_support::PlainFiles files_;
  test_support::FakeDialogs dialogs_;
  test_support::FakeNotices notices_;
  test_support::FakeMessageLoop messages_;
  test_support::FakeClock clock_;
  app::Life window_;
  controls::ListView full_;
  controls::ListView filtered_;
  controls::CommandButton Command4_;
  controls::CommandButton Command5_;
  M3uExport export_{
      {{full_, filtered_}, Command4_}, dialogs_, files_, conversion_, messages_, clock_, window_};
  M3uImport import_{
      {{full_, filtered_}, Command5_}, dialogs_, files_, conversion_, notices_, {[] {}}, window_};
};

TEST_F(M3uOnDiskTest, AnExportedFileIsImportedAgain) {
  dialogs_.chosen_file = folder_.TextPath("Öfter gehört.m3u");
  folder_.Write("Öfter gehört.m3u", "alt");
  Command4_.Click();
  EXPECT_EQ(folder_.Read("Öfter gehört.m3u"),
            "#EXTM3U\n#EXTINF:-1,Radio K\xF6ln\nhttp://1\n#EXTINF:-1,Zwei\n\n\r\n");
  Import(dialogs_.chosen_file, platform::MessageBoxAnswer::kNo);
  ASSERT_EQ(full_.Count(), 2U);
  EXPECT_EQ(full_.Rows()[0].cells[0], u"Radio Köln");
  EXPECT_EQ(full_.Rows()[0].cells[2], u"http://1");
  EXPECT_EQ(full_.Rows()[1].cells[0], u"Zwei");
}

TEST_F(M3uOnDiskTest, AnExportIntoAMissingFolderEndsWithoutAMessage) {
  dialogs_.chosen_file = folder_.TextPath("weg/liste.m3u");
  Command4_.Click();
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(M3uOnDiskTest, AnExportOntoAFolderEndsWithoutAMessage) {
  std::filesystem::create_directory(folder_.Path() / "liste.m3u");
  dialogs_.chosen_file = folder_.TextPath("liste.m3u");
  Command4_.Click();
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_TRUE(std::filesystem::is_directory(folder_.Path() / "liste.m3u"));
}

TEST_F(M3uOnDiskTest, AnExportOntoAFullDiskLeavesTheExistingFileAsItWasWithoutAMessage) {
  folder_.Write("liste.m3u", "alt");
  dialogs_.chosen_file = folder_.TextPath("liste.m3u");
  files_.is_full = true;
  Command4_.Click();
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_EQ(folder_.Read("liste.m3u"), "alt");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1);
}

TEST_F(M3uOnDiskTest, WhatIsNoOrdinaryPlaylistImportsNothing) {
  std::filesystem::create_directory(folder_.Path() / "ordner");
  std::filesystem::resize_file(folder_.Write("riesig", ""), std::uintmax_t{2} << 30U);
  for (const char* const name : {"ordner", "riesig", "fehlt"}) {
    Import(folder_.TextPath(name));
    EXPECT_EQ(full_.Count(), 2U) << name;
    EXPECT_EQ(GetLocalPlaylistEntry(files_, conversion_, folder_.TextPath(name), 1), u"") << name;
  }
}

TEST_F(M3uOnDiskTest, ALocalPlaylistMayNameFilesAndFolders) {
  const std::string song = folder_.Write("Lied.mp3", "").string();
  folder_.Write("liste.m3u", "#EXTM3U\n" + folder_.Path().string() + "\n" + song + "\n" + song + ".fehlt\n");
  const Text list = folder_.TextPath("liste.m3u");
  EXPECT_EQ(GetLocalPlaylistEntry(files_, conversion_, list, 1), folder_.TextPath());
  EXPECT_EQ(GetLocalPlaylistEntry(files_, conversion_, list, 2), folder_.TextPath("Lied.mp3"));
  EXPECT_EQ(GetLocalPlaylistEntry(files_, conversion_, list, 3), folder_.TextPath("Lied.mp3"));
}

}  // namespace
}  // namespace playlist
