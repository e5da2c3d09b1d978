#include "playlist/text_file.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/memory_files.h"
#include "tests/support/plain_text_conversion.h"

namespace playlist {
namespace {

using Lines = std::vector<Text>;

Lines AllLines(TextView text, TextView separator) {
  LineReader reader(text, separator);
  Lines lines;
  while (const auto line = reader.Next()) lines.emplace_back(*line);
  return lines;
}

TEST(LineReader, GivesEveryLineTheEmptyOnesToo) {
  EXPECT_EQ(AllLines(u"a\n\nb", u"\n"), (Lines{u"a", u"", u"b"}));
  EXPECT_EQ(AllLines(u"a\n", u"\n"), (Lines{u"a", u""}));
  EXPECT_EQ(AllLines(u"", u"\n"), Lines{u""});
}

TEST(LineReader, EndsLinesAtTheWholeSeparatorOnly) {
  EXPECT_EQ(AllLines(u"a\r\nb\nc\r", u"\r\n"), (Lines{u"a", u"b\nc\r"}));
  EXPECT_EQ(AllLines(u"a\r\nb", u"\n"), (Lines{u"a\r", u"b"}));
}

class TextFileTest : public testing::Test {
 protected:
  test_support::MemoryFiles files_;
  test_support::PlainTextConversion conversion_;
};

TEST_F(TextFileTest, WritesOneLineInTheAnsiCodePage) {
  EXPECT_TRUE(WriteTextFile(files_, conversion_, u"C:\\a.txt", u"Köln €\nΩ"));
  EXPECT_EQ(files_.files[u"C:\\a.txt"], "K\xF6ln \x80\n?\r\n");
}

TEST_F(TextFileTest, ReportsAFileThatCannotBeWritten) {
  files_.can_write = false;
  EXPECT_FALSE(WriteTextFile(files_, conversion_, u"C:\\a.txt", u"a"));
}

TEST_F(TextFileTest, ReadsEveryByteAsACharacter) {
  files_.files[u"C:\\a.txt"] = std::string("a\0\x81\xFC\r\n", 6);
  EXPECT_EQ(ReadTextFile(files_, conversion_, u"C:\\a.txt"), Text(u"a\0\x81ü\r\n", 6));
}

TEST_F(TextFileTest, ReadsNothingFromAMissingOrTooLargeFile) {
  EXPECT_EQ(ReadTextFile(files_, conversion_, u"C:\\a.txt"), std::nullopt);
  files_.files[u"C:\\a.txt"] = std::string(kLargestTextFile + 1, 'a');
  EXPECT_EQ(ReadTextFile(files_, conversion_, u"C:\\a.txt"), std::nullopt);
}

}  // namespace
}  // namespace playlist
