// Code pages and letter case, as every system's adapter must give them.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "text_under_test.h"

namespace platform {
namespace {

using namespace std::string_literals;

class TextConversionTest : public testing::Test {
 protected:
  Text Ansi(std::string_view bytes) { return conversion_.MultiByteToWideChar(CodePage::kAnsi, bytes); }
  std::string Ansi(TextView text) { return conversion_.WideCharToMultiByte(CodePage::kAnsi, text); }
  Text Utf8(std::string_view bytes) { return conversion_.MultiByteToWideChar(CodePage::kUtf8, bytes); }
  std::string Utf8(TextView text) { return conversion_.WideCharToMultiByte(CodePage::kUtf8, text); }

  under_test::TextConversion conversion_;
};

TEST_F(TextConversionTest, All256AnsiBytesAsTextComeBackUnchanged) {
  std::string all;
  for (int number = 0; number < 256; ++number) all.push_back(static_cast<char>(number));
  const Text text = Ansi(std::string_view(all));
  ASSERT_EQ(text.size(), 256U);
  EXPECT_EQ(std::set<char16_t>(text.begin(), text.end()).size(), 256U);
  EXPECT_EQ(Ansi(TextView(text)), all);
}

TEST_F(TextConversionTest, AnsiBytesMapToTheCharactersOfCodePage1252) {
  const std::map<int, char16_t> expected = {
      {0x00, 0x0000}, {0x41, u'A'},   {0x7F, 0x007F}, {0x80, 0x20AC}, {0x82, 0x201A}, {0x83, 0x0192},
      {0x84, 0x201E}, {0x85, 0x2026}, {0x86, 0x2020}, {0x87, 0x2021}, {0x88, 0x02C6}, {0x89, 0x2030},
      {0x8A, 0x0160}, {0x8B, 0x2039}, {0x8C, 0x0152}, {0x8E, 0x017D}, {0x91, 0x2018}, {0x92, 0x2019},
      {0x93, 0x201C}, {0x94, 0x201D}, {0x95, 0x2022}, {0x96, 0x2013}, {0x97, 0x2014}, {0x98, 0x02DC},
      {0x99, 0x2122}, {0x9A, 0x0161}, {0x9B, 0x203A}, {0x9C, 0x0153}, {0x9E, 0x017E}, {0x9F, 0x0178},
      {0xA0, 0x00A0}, {0xC4, u'Ä'},   {0xDF, u'ß'},   {0xFC, u'ü'},   {0xFF, u'ÿ'}};
  for (const auto& [byte, character] : expected) {
    EXPECT_EQ(Ansi(std::string_view(std::string(1, static_cast<char>(byte)))), Text(1, character)) << byte;
  }
}

TEST_F(TextConversionTest, FiveUnassignedAnsiBytesAreTheControlCharactersOfTheSameNumber) {
  for (const int number : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
    const std::string byte(1, static_cast<char>(number));
    const Text control(1, static_cast<char16_t>(number));
    EXPECT_EQ(Ansi(std::string_view(byte)), control) << number;
    EXPECT_EQ(Ansi(TextView(control)), byte) << number;
  }
}

TEST_F(TextConversionTest, AnsiWritesAQuestionMarkForEachCharacterItLacks) {
  EXPECT_EQ(Ansi(TextView(u"Ωmega Łódź")), "?mega ?\xF3"s + "d?");
  // The control characters whose numbers are used for other characters have no byte of their own.
  EXPECT_EQ(Ansi(TextView(u"\x80\x9F")), "??");
  EXPECT_EQ(Ansi(TextView(u"a😀b")), "a?b");
  const Text lone = {u'a', 0xD83D, u'b', 0xDE00, 0xD83D};
  EXPECT_EQ(Ansi(TextView(lone)), "a?b??");
}

TEST_F(TextConversionTest, Utf8GoesBothWays) {
  const Text text = u"Grüße, Ελλάδα, 日本, 😀\0!"s;
  const std::string bytes =
      "Gr\xC3\xBC\xC3\x9F"
      "e, \xCE\x95\xCE\xBB\xCE\xBB\xCE\xAC\xCE\xB4\xCE\xB1, "
      "\xE6\x97\xA5\xE6\x9C\xAC, \xF0\x9F\x98\x80\0!"s;
  EXPECT_EQ(Utf8(TextView(text)), bytes);
  EXPECT_EQ(Utf8(std::string_view(bytes)), text);
}

TEST_F(TextConversionTest, MalformedUtf8DecodesToReplacementCharacters) {
  EXPECT_EQ(Utf8(std::string_view("a\xFC"
                                  "b")),
            u"a\uFFFDb");
  EXPECT_EQ(Utf8(std::string_view("a\xC3")), u"a\uFFFD");
  EXPECT_EQ(Utf8(std::string_view("\xE2\x82")), u"\uFFFD");
  EXPECT_EQ(Utf8(std::string_view("\x80")), u"\uFFFD");
}

TEST_F(TextConversionTest, SequencesThatNoCharacterHasGiveNothingButReplacementCharacters) {
  for (const char* const bytes : {"\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFE\xFF"}) {
    const Text text = Utf8(std::string_view(bytes));
    EXPECT_FALSE(text.empty()) << bytes;
    EXPECT_EQ(text, Text(text.size(), u'\uFFFD')) << bytes;
  }
}

TEST_F(TextConversionTest, UnpairedSurrogateEncodesAsOneReplacementCharacter) {
  const Text lone = {u'a', 0xD83D, u'b'};
  EXPECT_EQ(Utf8(TextView(lone)),
            "a\xEF\xBF\xBD"
            "b");
}

TEST_F(TextConversionTest, EmptyInputGivesEmptyOutput) {
  EXPECT_EQ(Ansi(std::string_view()), u"");
  EXPECT_EQ(Ansi(TextView()), "");
  EXPECT_EQ(Utf8(std::string_view()), u"");
  EXPECT_EQ(Utf8(TextView()), "");
  EXPECT_EQ(conversion_.CharLowerW(u""), u"");
  EXPECT_EQ(conversion_.CharUpperW(u""), u"");
}

TEST_F(TextConversionTest, CaseChangesGermanLettersAndKeepsSharpS) {
  EXPECT_EQ(conversion_.CharLowerW(u"GRÜSSE ÄÖÜ ß 123 Ÿ É"), u"grüsse äöü ß 123 ÿ é");
  EXPECT_EQ(conversion_.CharUpperW(u"Größe äöü ÿ é"), u"GRÖßE ÄÖÜ Ÿ É");
}

TEST_F(TextConversionTest, CaseNeverChangesTheLengthOfAnyUnit) {
  for (int number = 0; number <= 0xFFFF; ++number) {
    const Text unit(1, static_cast<char16_t>(number));
    const Text lower = conversion_.CharLowerW(unit);
    const Text upper = conversion_.CharUpperW(unit);
    ASSERT_EQ(lower.size(), 1U) << number;
    ASSERT_EQ(upper.size(), 1U) << number;
    ASSERT_EQ(conversion_.CharLowerW(lower), lower) << number;
    ASSERT_EQ(conversion_.CharUpperW(upper), upper) << number;
  }
}

TEST_F(TextConversionTest, CaseLeavesLettersThatWouldNotComeBack) {
  EXPECT_EQ(conversion_.CharUpperW(u"ıſ"), u"ıſ");
  EXPECT_EQ(conversion_.CharLowerW(u"\u212Aİ"), u"\u212Aİ");
}

}  // namespace
}  // namespace platform
