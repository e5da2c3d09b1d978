#include "playlist/file_dialogs.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"

namespace playlist {
namespace {

using namespace std::string_literals;

FileDialogParams Params() {
  FileDialogParams params;
  params.title = u"Titel";
  params.filter = u"M3U-Datei (*.m3u)|*.m3u";
  params.flags = 4097;
  params.default_extension = u"m3u";
  params.initial_folder = u"C:\\Musik";
  params.default_file_name = u"liste.m3u";
  return params;
}

TEST(FileDialogs, PassEveryParameterToTheSystemsRecord) {
  test_support::FakeDialogs dialogs;
  (void)ShowOpenFileDialog(dialogs, Params());
  (void)ShowSaveFileDialog(dialogs, Params());
  ASSERT_EQ(dialogs.file_dialogs.size(), 2U);
  for (const auto& record : dialogs.file_dialogs) {
    EXPECT_EQ(record.struct_size, 76U);
    EXPECT_EQ(record.owner, 1U);
    EXPECT_EQ(record.title, u"Titel");
    EXPECT_EQ(record.initial_folder, u"C:\\Musik");
    EXPECT_EQ(record.default_extension, u"m3u");
    EXPECT_EQ(record.flags, 4097U);
  }
}

TEST(FileDialogs, TheBufferIsTheDefaultNameWith8120NulsToOpenAnd512ToSave) {
  test_support::FakeDialogs dialogs;
  (void)ShowOpenFileDialog(dialogs, Params());
  (void)ShowSaveFileDialog(dialogs, Params());
  EXPECT_EQ(dialogs.file_dialogs[0].file, u"liste.m3u" + Text(8120, u'\0'));
  EXPECT_EQ(dialogs.file_dialogs[1].file, u"liste.m3u" + Text(512, u'\0'));
}

TEST(FileDialogs, TheFilterIsSeparatedByNulsAndEndsInTwo) {
  test_support::FakeDialogs dialogs;
  FileDialogParams params;
  const auto filter = [&](const Text& text) {
    params.filter = text;
    (void)ShowOpenFileDialog(dialogs, params);
    return dialogs.file_dialogs.back().filter;
  };
  EXPECT_EQ(filter(u"M3U|*.m3u"), u"M3U\0*.m3u\0\0"s);
  EXPECT_EQ(filter(u"M3U|*.m3u|"), u"M3U\0*.m3u\0\0"s);
  EXPECT_EQ(filter(u"M3U|*.m3u||"), u"M3U\0*.m3u\0\0"s);
  EXPECT_EQ(filter(u""), u"\0\0"s);
}

TEST(FileDialogs, GiveTheChosenPathUpToItsFirstNul) {
  test_support::FakeDialogs dialogs;
  dialogs.chosen_file = u"C:\\a\\b.m3u";
  FileDialogParams params;
  params.default_file_name = u"ein langer Name hinter dem Pfad.m3u";
  EXPECT_EQ(ShowOpenFileDialog(dialogs, params), u"C:\\a\\b.m3u");
  EXPECT_EQ(ShowSaveFileDialog(dialogs, params), u"C:\\a\\b.m3u");
}

TEST(FileDialogs, CancellingGivesAnEmptyPath) {
  test_support::FakeDialogs dialogs;
  EXPECT_EQ(ShowOpenFileDialog(dialogs, Params()), u"");
  EXPECT_EQ(ShowSaveFileDialog(dialogs, Params()), u"");
}

TEST(FileDialogs, APathThatDoesNotFitIsAFailure) {
  test_support::FakeDialogs dialogs;
  dialogs.chosen_file = Text(600, u'a');
  EXPECT_EQ(ShowSaveFileDialog(dialogs, Params()), u"");
  EXPECT_EQ(ShowOpenFileDialog(dialogs, Params()), Text(600, u'a'));
}

}  // namespace
}  // namespace playlist
