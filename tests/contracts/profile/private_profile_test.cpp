// Reading through the private-profile operations. Writing is in private_profile_writing_test.cpp.

#include "platform/ini/private_profile.h"

#include <filesystem>

#include "profile_under_test.h"
#include "tests/support/ini_changed_by_others.h"

namespace platform::ini {
namespace {

class PrivateProfileReading : public IniFixture {};

TEST_F(PrivateProfileReading, NamesMatchWithoutRegardToCaseGermanLettersIncluded) {
  Given(
      "[\xC4PFEL]\r\nGr\xD6\xDF"
      "e=1\r\n[stra\xDF"
      "e]\r\nKey=2\r\n");
  EXPECT_EQ(Read(u"äpfel", u"größe"), u"1");
  EXPECT_EQ(Read(u"ÄPFEL", u"GRÖßE"), u"1");
  EXPECT_EQ(Read(u"STRAßE", u"KEY"), u"2");
}

TEST_F(PrivateProfileReading, BlanksAndTabsRoundLinesKeysValuesAndSectionNamesAreDropped) {
  Given(" \t[ \ta b\t ] \r\n\t  key one \t=\t  value \t \r\n");
  EXPECT_EQ(Read(u"a b", u"key one"), u"value");
}

TEST_F(PrivateProfileReading, TheNamesThatAreAskedForAreTrimmedToo) {
  Given("[a]\r\nk=1\r\n");
  EXPECT_EQ(Read(u" \ta ", u"\tk  "), u"1");
}

TEST_F(PrivateProfileReading, ExactlyOnePairOfEqualQuotesIsRemovedAndBlanksInsideItStay) {
  Given("[a]\nk1=\"  keep  \"\nk2=\"\"x\"\"\nk3=\"\"\nk4='x'\nk5=''\nk6='\"x\"'\n");
  EXPECT_EQ(Read(u"a", u"k1"), u"  keep  ");
  EXPECT_EQ(Read(u"a", u"k2"), u"\"x\"");
  EXPECT_EQ(Read(u"a", u"k3"), u"");
  EXPECT_EQ(Read(u"a", u"k4"), u"x");
  EXPECT_EQ(Read(u"a", u"k5"), u"");
  EXPECT_EQ(Read(u"a", u"k6"), u"\"x\"");
}

TEST_F(PrivateProfileReading, ALoneOrMixedQuoteStays) {
  Given("[a]\nk1=\"abc\nk2=abc\"\nk3=\"abc'\nk4=\"abc\" ; c\nk5=a \"b\" c\nk6=\"\nk7='\n");
  EXPECT_EQ(Read(u"a", u"k1"), u"\"abc");
  EXPECT_EQ(Read(u"a", u"k2"), u"abc\"");
  EXPECT_EQ(Read(u"a", u"k3"), u"\"abc'");
  EXPECT_EQ(Read(u"a", u"k4"), u"\"abc\" ; c");
  EXPECT_EQ(Read(u"a", u"k5"), u"a \"b\" c");
  EXPECT_EQ(Read(u"a", u"k6"), u"\"");
  EXPECT_EQ(Read(u"a", u"k7"), u"'");
}

TEST_F(PrivateProfileReading, AKeyWithoutValueIsEmptyAndALineWithoutEqualsSignIsNoKey) {
  Given("[a]\r\nk=\r\nl\r\nm = \t\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"");
  EXPECT_EQ(Read(u"a", u"l"), u"(default)");
  EXPECT_EQ(Read(u"a", u"m"), u"");
}

TEST_F(PrivateProfileReading, TheFirstEqualsSignSplits) {
  Given("[a]\r\neq=a=b=c\r\n");
  EXPECT_EQ(Read(u"a", u"eq"), u"a=b=c");
}

TEST_F(PrivateProfileReading, ASemicolonStartsACommentOnlyAtTheBeginningOfALine) {
  Given("[a]\r\n;k=1\r\n \t;l=2\r\nm=val ; tail\r\n#hash=2\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"(default)");
  EXPECT_EQ(Read(u"a", u";k"), u"(default)");
  EXPECT_EQ(Read(u"a", u"l"), u"(default)");
  EXPECT_EQ(Read(u"a", u"m"), u"val ; tail");
  EXPECT_EQ(Read(u"a", u"#hash"), u"2");
}

TEST_F(PrivateProfileReading, OfEqualKeysAndSectionsTheFirstCountsAndTheListHoldsBoth) {
  Given("[a]\r\nk=1\r\nK=2\r\n[b]\r\n[A]\r\nk=3\r\nonly second=4\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"1");
  EXPECT_EQ(Read(u"A", u"only second"), u"(default)");
  EXPECT_EQ(Names(), "a|b|A|");
}

TEST_F(PrivateProfileReading, WhatFollowsTheLastBracketIsIgnoredAndAnUnclosedOneIsNoSection) {
  Given("[a]tail\r\nk=1\r\n[b]]\r\nk=2\r\n[unclosed\r\nl=3\r\n[]\r\nk=4\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"1");
  EXPECT_EQ(Read(u"b]", u"k"), u"2");
  EXPECT_EQ(Read(u"b]", u"l"), u"3");
  EXPECT_EQ(Read(u"", u"k"), u"4");
  EXPECT_EQ(Read(u"unclosed", u"l"), u"(default)");
}

TEST_F(PrivateProfileReading, EveryKindOfLineEndEndsALineAndTheLastLineMayLackItsEnd) {
  Given("[a]\rk1=1\nk2=2\r\nk3=3\r\r\nk4=4\n\rk5=5");
  EXPECT_EQ(Read(u"a", u"k1"), u"1");
  EXPECT_EQ(Read(u"a", u"k2"), u"2");
  EXPECT_EQ(Read(u"a", u"k3"), u"3");
  EXPECT_EQ(Read(u"a", u"k4"), u"4");
  EXPECT_EQ(Read(u"a", u"k5"), u"5");
}

TEST_F(PrivateProfileReading, KeysBeforeTheFirstSectionBelongToNone) {
  Given("k=1\r\n[a]\r\n");
  EXPECT_EQ(Read(u"", u"k"), u"(default)");
  EXPECT_EQ(Read(u"a", u"k"), u"(default)");
}

TEST_F(PrivateProfileReading, WhatIsMissingGivesTheDefaultWithoutItsTrailingBlanks) {
  EXPECT_EQ(Read(u"a", u"k", u"no file  "), u"no file");
  Given("[a]\r\nk=1\r\n");
  EXPECT_EQ(Read(u"b", u"k", u" no section  "), u" no section");
  EXPECT_EQ(Read(u"a", u"l", u"no key "), u"no key");
  EXPECT_EQ(Read(u"a", u"l", u""), u"");
  EXPECT_EQ(Read(u"a", u"l", u"   "), u"");
}

TEST_F(PrivateProfileReading, TheResultIsCutToTheBufferLessOneAndTheCountSaysWhatWasCopied) {
  Given("[a]\r\nk=0123456789\r\n");
  std::vector<char16_t> buffer(6, u'#');
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, Path()), 5U);
  EXPECT_EQ(Text(buffer.data(), buffer.size()), Text(u"01234\0", 6));
  buffer.assign(11, u'#');
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, Path()), 10U);
  EXPECT_EQ(Text(buffer.data(), buffer.size()), Text(u"0123456789\0", 11));
  buffer.assign(1, u'#');
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, Path()), 0U);
  EXPECT_EQ(buffer[0], u'\0');
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", {}, Path()), 0U);
  buffer.assign(4, u'#');
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"missing", u"default", buffer, Path()), 3U);
  EXPECT_EQ(Text(buffer.data()), u"def");
}

TEST_F(PrivateProfileReading, SectionNamesAreListedInFileOrderTrimmedAndWithoutTheEmptyName) {
  Given("junk\r\n[z]\r\n[ b c ]\r\n[]\r\n[ ]\r\n[\xE4]x\r\n");
  EXPECT_EQ(Names(), "z|b c|\xE4|");
}

TEST_F(PrivateProfileReading, TheListOfNamesEndsWithOneMoreNulThatIsNotCounted) {
  Given("[ab]\r\n[c]\r\n");
  std::vector<char> buffer(8, '#');
  EXPECT_EQ(profile.GetPrivateProfileSectionNamesA(buffer, Path()), 5U);
  EXPECT_EQ(std::string(buffer.data(), 8), std::string("ab\0c\0\0##", 8));
}

TEST_F(PrivateProfileReading, AListOfNamesThatDoesNotFitIsCutInMidNameAndCountsTheSizeLessTwo) {
  Given("[abc]\r\n[defg]\r\n");
  const std::string whole("abc\0defg\0\0", 10);
  std::vector<char> buffer(10, '#');
  EXPECT_EQ(profile.GetPrivateProfileSectionNamesA(buffer, Path()), 9U);
  EXPECT_EQ(std::string(buffer.data(), 10), whole);
  buffer.assign(9, '#');
  EXPECT_EQ(profile.GetPrivateProfileSectionNamesA(buffer, Path()), 7U);
  EXPECT_EQ(std::string(buffer.data(), 9), std::string("abc\0def\0\0", 9));
  for (const std::size_t size : {1U, 2U}) {
    buffer.assign(size, '#');
    EXPECT_EQ(profile.GetPrivateProfileSectionNamesA(buffer, Path()), 0U);
    EXPECT_EQ(std::string(buffer.data(), size), std::string(size, '\0'));
  }
  EXPECT_EQ(profile.GetPrivateProfileSectionNamesA({}, Path()), 0U);
}

TEST_F(PrivateProfileReading, AMissingFileHasNoNames) {
  std::vector<char> buffer(4, '#');
  EXPECT_EQ(profile.GetPrivateProfileSectionNamesA(buffer, Path()), 0U);
  EXPECT_EQ(buffer[0], '\0');
}

TEST_F(PrivateProfileReading,
       ANameOutsideTheCodePageIsListedWithQuestionMarksAndItsKeysAreNotFoundUnderThem) {
  Given(Utf16(u"[Радио 1]\r\nLink=x\r\n[Ärzte €]\r\nLink=y\r\n"));
  EXPECT_EQ(Names(), "????? 1|\xC4rzte \x80|");
  EXPECT_EQ(Read(u"????? 1", u"Link"), u"(default)");
  EXPECT_EQ(Read(u"радио 1", u"Link"), u"x");
  EXPECT_EQ(Read(u"Ärzte €", u"Link"), u"y");
}

TEST_F(PrivateProfileReading, AHalfUnitAtTheEndOfATornUtf16FileBelongsToNoValue) {
  Given(Utf16(u"[a]\r\nk= 1 ") + "x");
  EXPECT_EQ(Read(u"a", u"k"), u"1");
}

TEST_F(PrivateProfileReading, AFileWithTheMarkFffeIsUtf16) {
  Given(Utf16(u"[Größe]\r\nk=Ωmega 𝄞\r\n\nl=2"));
  EXPECT_EQ(Read(u"grösse", u"k"), u"(default)");
  EXPECT_EQ(Read(u"größe", u"k"), u"Ωmega 𝄞");
  EXPECT_EQ(Read(u"größe", u"l"), u"2");
}

TEST_F(PrivateProfileReading, AnyOtherFileIsCodePage1252) {
  Given("[a]\r\nk=\x80 \xC3\xA4 \x81\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"\u20AC \u00C3\u00A4 \u0081");
}

TEST_F(PrivateProfileReading, AFileWithTheMarkEfbbbfIsUtf8) {
  Given("\xEF\xBB\xBF[\xC3\x84pfel]\r\nk=\xCE\xA9\r\nbad=\xFFx\r\n");
  EXPECT_EQ(Read(u"äpfel", u"k"), u"Ω");
  EXPECT_EQ(Read(u"äpfel", u"bad"), u"\uFFFDx");
  EXPECT_EQ(Names(), "\xC4pfel|");
}

TEST_F(PrivateProfileReading, NulBytesDoNoHarm) {
  using namespace std::string_literals;
  Given("[a]\r\nk=x\0y\r\n\0\0\r\nl=2\r\n[n\0m]\r\n"s);
  EXPECT_EQ(Read(u"a", u"k"), u"x\0y"s);
  EXPECT_EQ(Read(u"a", u"l"), u"2");
  EXPECT_EQ(Names(), "a|n?m|");
  EXPECT_EQ(Read(u"a\0b"s, u"l\0"s), u"2");
}

TEST_F(PrivateProfileReading, LinesOfAMegabyteDoNoHarm) {
  const std::string mega(1024 * 1024, 'x');
  Given("[" + mega + "\r\n[a]\r\n" + mega + "\r\nk=" + mega + "\r\n;" + mega + "\r\nl=2\r\n[" + mega +
        "]\r\n");
  std::vector<char16_t> buffer(mega.size() + 10);
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, Path()), mega.size());
  EXPECT_EQ(Read(u"a", u"l"), u"2");
  EXPECT_EQ(Names(7), "a|xxx");
}

TEST_F(PrivateProfileReading, AFileOver64MebibytesCountsAsMissingAndIsNotReplaced) {
  Given("[a]\r\nk=1\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"1");
  std::filesystem::resize_file(folder.Path() / "test.ini", 64U * 1024 * 1024 + 1);
  EXPECT_EQ(Read(u"a", u"k"), u"(default)");
  EXPECT_EQ(Names(), "");
  EXPECT_FALSE(Write(u"a", u"k", u"2"));
  EXPECT_EQ(std::filesystem::file_size(folder.Path() / "test.ini"), 64U * 1024 * 1024 + 1);
}

TEST_F(PrivateProfileReading, WhatIsNoRegularFileReadsAsMissing) {
  std::filesystem::create_directory(folder.Path() / "test.ini");
  EXPECT_EQ(Read(u"a", u"k"), u"(default)");
  EXPECT_EQ(Names(), "");
}

TEST_F(PrivateProfileReading, PathsWithBackslashesAndUmlautsAreFound) {
  folder.Write("Körbe/Opt.ini", "[a]\r\nk=1\r\n");
  std::vector<char16_t> buffer(10);
  const Text path = folder.TextPath() + u"\\Körbe\\Opt.ini";
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, path), 1U);
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, path + Text(u"\0x", 2)), 0U);
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, u""), 0U);
}

TEST_F(PrivateProfileReading, AnUnusablePathHasNoNames) {
  std::vector<char> buffer(4, '#');
  EXPECT_EQ(profile.GetPrivateProfileSectionNamesA(buffer, u""), 0U);
}

TEST_F(PrivateProfileReading, ManyFilesAtOnceAreAllReadRight) {
  for (int round = 0; round < 2; ++round) {
    for (int number = 0; number < 30; ++number) {
      const std::string name = std::to_string(number);
      folder.Write(name, "[a]\r\nk=" + name + "\r\n");
      std::vector<char16_t> buffer(10);
      profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, folder.TextPath(name));
      EXPECT_EQ(Text(buffer.data()), Text(name.begin(), name.end()));
    }
  }
}

}  // namespace
}  // namespace platform::ini

namespace test_support {

INSTANTIATE_TYPED_TEST_SUITE_P(Disk, IniChangedByOthers, platform::ini::IniFixture);

}  // namespace test_support
