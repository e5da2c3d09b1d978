// Writing through the private-profile operations, as the bytes of the file show it.

#include "platform/ini/private_profile.h"
#include "profile_under_test.h"

namespace platform::ini {
namespace {

class PrivateProfileWriting : public IniFixture {};

TEST_F(PrivateProfileWriting, OnlyTheTouchedLineChanges) {
  using namespace std::string_literals;
  const std::string before = "junk=0\r\nno key\r\n\n  [a] tail ;x\r\n\t; comment\r\n\r\n  l = \"1\" \r"s;
  const std::string after = "\n\r\nm=\x81\0\xFF\r\n \t\r\n[b\r\n[b]\nk=2"s;
  Given(before + "k=old" + after);
  EXPECT_TRUE(Write(u"a", u"k", u"new"));
  EXPECT_EQ(Bytes(), before + "k=new" + after);
  EXPECT_TRUE(Write(u"b", u"k", u"3"));
  EXPECT_EQ(Bytes(), before + "k=new" + after.substr(0, after.size() - 1) + "3");
}

TEST_F(PrivateProfileWriting, ReplacingKeepsTheFilesOwnSpellingOfTheKeyAndItsPlace) {
  Given("[a]\r\nx=1\r\nKey One = \"old\" \r\ny=2\r\n");
  EXPECT_TRUE(Write(u"A", u"KEY ONE", u"new"));
  EXPECT_EQ(Bytes(), "[a]\r\nx=1\r\nKey One=new\r\ny=2\r\n");
}

TEST_F(PrivateProfileWriting, ReplacingChangesTheFirstOfEqualKeysInTheFirstOfEqualSections) {
  Given("[a]\r\nk=1\r\nk=2\r\n[a]\r\nk=3\r\n");
  EXPECT_TRUE(Write(u"a", u"k", u"9"));
  EXPECT_EQ(Bytes(), "[a]\r\nk=9\r\nk=2\r\n[a]\r\nk=3\r\n");
}

TEST_F(PrivateProfileWriting, ANewKeyComesAfterTheSectionsLastNonBlankLine) {
  Given("[a]\r\nk=1\r\n; comment\r\n \t\r\n\r\n[b]\r\nk=2\r\n");
  EXPECT_TRUE(Write(u"a", u"new", u"3"));
  EXPECT_EQ(Bytes(), "[a]\r\nk=1\r\n; comment\r\nnew=3\r\n \t\r\n\r\n[b]\r\nk=2\r\n");
}

TEST_F(PrivateProfileWriting, ANewKeyOfAnEmptySectionComesRightAfterItsHeader) {
  Given("[a]\r\n\r\n\r\n[b]\r\n");
  EXPECT_TRUE(Write(u"a", u"k", u"1"));
  EXPECT_EQ(Bytes(), "[a]\r\nk=1\r\n\r\n\r\n[b]\r\n");
  Given("[a]");
  EXPECT_TRUE(Write(u"a", u"k", u"1"));
  EXPECT_EQ(Bytes(), "[a]\r\nk=1\r\n");
}

TEST_F(PrivateProfileWriting, ANewSectionComesAtTheEndWithoutABlankLineBeforeIt) {
  Given("[a]\r\nk=1\r\n");
  EXPECT_TRUE(Write(u"b", u"l", u"2"));
  EXPECT_EQ(Bytes(), "[a]\r\nk=1\r\n[b]\r\nl=2\r\n");
}

TEST_F(PrivateProfileWriting, AMissingLineEndIsAddedFirst) {
  Given("[a]\nk=1");
  EXPECT_TRUE(Write(u"b", u"l", u"2"));
  EXPECT_EQ(Bytes(), "[a]\nk=1\n[b]\nl=2\n");
  Given("[a]\nk=1");
  EXPECT_TRUE(Write(u"a", u"l", u"2"));
  EXPECT_EQ(Bytes(), "[a]\nk=1\nl=2\n");
  Given("junk");
  EXPECT_TRUE(Write(u"a", u"l", u"2"));
  EXPECT_EQ(Bytes(), "junk\r\n[a]\r\nl=2\r\n");
}

TEST_F(PrivateProfileWriting, NewLinesUseTheFilesOwnLineEnd) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    Given("[a]" + end + "k=1" + end);
    EXPECT_TRUE(Write(u"a", u"l", u"2"));
    EXPECT_TRUE(Write(u"b", u"m", u"3"));
    EXPECT_EQ(Bytes(), "[a]" + end + "k=1" + end + "l=2" + end + "[b]" + end + "m=3" + end);
  }
}

TEST_F(PrivateProfileWriting, ANewFileIsCodePage1252WithoutAMarkAndHasCrLf) {
  EXPECT_TRUE(Write(u"Größe €", u"Schlüssel", u"Wert Ω ü 𝄞"));
  EXPECT_EQ(Bytes(),
            "[Gr\xF6\xDF"
            "e \x80]\r\nSchl\xFCssel=Wert ? \xFC ?\r\n");
  EXPECT_EQ(Read(u"Größe €", u"Schlüssel"), u"Wert ? ü ?");
}

TEST_F(PrivateProfileWriting, NamesThatTheCodePageLacksAreFoundAgainWhenTheNextKeyIsWritten) {
  EXPECT_TRUE(Write(u"Радио", u"Genre", u"Rock"));
  EXPECT_TRUE(Write(u"Радио", u"Link", u"x"));
  EXPECT_TRUE(Write(u"Радио", u"Genre", u"Pop"));
  EXPECT_EQ(Bytes(), "[?????]\r\nGenre=Pop\r\nLink=x\r\n");
  EXPECT_EQ(Read(u"Радио", u"Genre"), u"Pop");
}

TEST_F(PrivateProfileWriting, AnEmptyFileIsWrittenLikeANewOne) {
  Given("");
  EXPECT_TRUE(Write(u"a", u"k", u"ü"));
  EXPECT_EQ(Bytes(), "[a]\r\nk=\xFC\r\n");
}

TEST_F(PrivateProfileWriting, AUtf16FileStaysOne) {
  Given(Utf16(u"; Ω\r\n[a]\r\nk=1\r\n\r\n[b]\r\nl=2"));
  EXPECT_TRUE(Write(u"A", u"K", u"Ωmega 𝄞"));
  EXPECT_TRUE(Write(u"a", u"new", u"ü"));
  EXPECT_TRUE(Write(u"ж", u"m", u"3"));
  EXPECT_EQ(Bytes(), Utf16(u"; Ω\r\n[a]\r\nk=Ωmega 𝄞\r\nnew=ü\r\n\r\n[b]\r\nl=2\r\n[ж]\r\nm=3\r\n"));
  EXPECT_EQ(Read(u"Ж", u"m"), u"3");
}

TEST_F(PrivateProfileWriting, AUtf16FileThatHoldsOnlyItsMarkGrowsAsUtf16) {
  Given(Utf16(u""));
  EXPECT_TRUE(Write(u"ж", u"k", u"Ω"));
  EXPECT_EQ(Bytes(), Utf16(u"[ж]\r\nk=Ω\r\n"));
}

TEST_F(PrivateProfileWriting, ATornUtf16FileGetsAWholeUnitBeforeTheNextLine) {
  Given(Utf16(u"[a]\nk=1") + "x");
  EXPECT_EQ(Read(u"a", u"k"), u"1");
  EXPECT_TRUE(Write(u"b", u"l", u"2"));
  EXPECT_EQ(Bytes(), Utf16(u"[a]\nk=1x\n[b]\nl=2\n"));
}

TEST_F(PrivateProfileWriting, ALineFeedAcrossTwoUnitsOfATornFileEndsNoLine) {
  Given(Utf16(u"[a]\nk=\u0A31") + std::string(1, '\0'));
  EXPECT_TRUE(Write(u"b", u"l", u"2"));
  EXPECT_EQ(Bytes(), Utf16(u"[a]\nk=\u0A31\uFF00\n[b]\nl=2\n"));
}

TEST_F(PrivateProfileWriting, ATornUtf16LineDoesNotBecomeASection) {
  Given(Utf16(u"[a]\nk=1\n[b") + "]");
  EXPECT_TRUE(Write(u"c", u"l", u"2"));
  EXPECT_EQ(Bytes(), Utf16(u"[a]\nk=1\n[b\xFF5D\n[c]\nl=2\n"));
}

TEST_F(PrivateProfileWriting, AUtf8FileStaysOne) {
  Given("\xEF\xBB\xBF[\xC3\x84]\nk=1\nbad\xFF=\xFE\n");
  EXPECT_TRUE(Write(u"ä", u"k", u"Ω"));
  EXPECT_TRUE(Write(u"ж", u"l", u"2"));
  EXPECT_EQ(Bytes(), "\xEF\xBB\xBF[\xC3\x84]\nk=\xCE\xA9\nbad\xFF=\xFE\n[\xD0\xB6]\nl=2\n");
}

TEST_F(PrivateProfileWriting, AnEmptyValueWritesTheKeyAndTheEqualsSign) {
  EXPECT_TRUE(Write(u"a", u"k", u""));
  EXPECT_EQ(Bytes(), "[a]\r\nk=\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"");
}

TEST_F(PrivateProfileWriting, LeadingBlanksOfAValueAreDropped) {
  EXPECT_TRUE(Write(u"a", u"k", u"  x y "));
  EXPECT_EQ(Bytes(), "[a]\r\nk=x y \r\n");
}

TEST_F(PrivateProfileWriting, TheNamesThatAreWrittenAreTrimmed) {
  EXPECT_TRUE(Write(u" a\t", u"\tk ", u"1"));
  EXPECT_EQ(Bytes(), "[a]\r\nk=1\r\n");
}

TEST_F(PrivateProfileWriting, NoValueDeletesTheFirstSuchKey) {
  Given("[a]\r\nk=1\r\n;c\r\nK=2\r\n\r\n[b]\r\nk=3\r\n");
  EXPECT_TRUE(DeleteKey(u"A", u"k"));
  EXPECT_EQ(Bytes(), "[a]\r\n;c\r\nK=2\r\n\r\n[b]\r\nk=3\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"2");
}

TEST_F(PrivateProfileWriting, DeletingTheLastKeyLeavesTheHeader) {
  Given("[a]\r\nk=1");
  EXPECT_TRUE(DeleteKey(u"a", u"k"));
  EXPECT_EQ(Bytes(), "[a]\r\n");
  EXPECT_EQ(Names(), "a|");
}

TEST_F(PrivateProfileWriting, DeletingWhatIsNotThereChangesNothingAndIsASuccess) {
  EXPECT_TRUE(DeleteKey(u"a", u"k"));
  EXPECT_TRUE(DeleteSection(u"a"));
  EXPECT_EQ(Bytes(), "<missing>");
  Given("[a]\r\nk=1\r\n");
  EXPECT_TRUE(DeleteKey(u"a", u"l"));
  EXPECT_TRUE(DeleteKey(u"b", u"k"));
  EXPECT_TRUE(DeleteSection(u"b"));
  EXPECT_EQ(disk.replacements, 0);
  EXPECT_EQ(Bytes(), "[a]\r\nk=1\r\n");
}

TEST_F(PrivateProfileWriting, NoKeyDeletesTheHeaderAndEveryLineUpToTheNextHeader) {
  Given("junk\r\n[a]x\r\nk=1\r\n;c\r\n[unclosed\r\n\r\n[b]\r\nk=2\r\n[A]\r\nk=3\r\n");
  EXPECT_TRUE(DeleteSection(u"a"));
  EXPECT_EQ(Bytes(), "junk\r\n[b]\r\nk=2\r\n[A]\r\nk=3\r\n");
  EXPECT_EQ(Read(u"a", u"k"), u"3");
  EXPECT_TRUE(DeleteSection(u"a"));
  EXPECT_EQ(Bytes(), "junk\r\n[b]\r\nk=2\r\n");
}

TEST_F(PrivateProfileWriting, NoKeyDeletesTheSectionEvenWhenAValueIsGiven) {
  Given("[a]\r\nk=1\r\n");
  EXPECT_TRUE(profile.WritePrivateProfileStringW(u"a", std::nullopt, u"x", Path()));
  EXPECT_EQ(Bytes(), "");
}

TEST_F(PrivateProfileWriting, WritingTheValueThatIsAlreadyThereDoesNotTouchTheFile) {
  Given("[a]\r\nk = \"x y\"\r\nl=\r\n");
  EXPECT_TRUE(Write(u"a", u"k", u"x y"));
  EXPECT_TRUE(Write(u"a", u"k", u"  x y"));
  EXPECT_TRUE(Write(u"A", u"L", u""));
  EXPECT_EQ(disk.replacements, 0);
  EXPECT_EQ(Bytes(), "[a]\r\nk = \"x y\"\r\nl=\r\n");
}

TEST_F(PrivateProfileWriting, LineBreaksInsideNamesAndValuesAreDropped) {
  EXPECT_TRUE(Write(u"a\r\nb", u"k\nl", u"x\r[evil]\ny=1"));
  EXPECT_EQ(Bytes(), "[ab]\r\nkl=x[evil]y=1\r\n");
  EXPECT_EQ(Read(u"a\nb", u"kl"), u"x[evil]y=1");
}

TEST_F(PrivateProfileWriting, ABracketInANameIsWrittenAsItIs) {
  EXPECT_TRUE(Write(u"a]b", u"k", u"1"));
  EXPECT_EQ(Bytes(), "[a]b]\r\nk=1\r\n");
  EXPECT_EQ(Read(u"a]b", u"k"), u"1");
}

TEST_F(PrivateProfileWriting, NamesAndValuesEndAtANul) {
  EXPECT_TRUE(Write(Text(u"a\0b", 3), Text(u"k\0l", 3), Text(u"1\0002", 3)));
  EXPECT_EQ(Bytes(), "[a]\r\nk=1\r\n");
}

TEST_F(PrivateProfileWriting, AKeyThatItsLineWouldNotGiveBackIsRefused) {
  Given("[a]\r\n[b=1\r\n");
  EXPECT_FALSE(Write(u"a", u"k=l", u"1"));
  EXPECT_FALSE(Write(u"a", u";k", u"1"));
  EXPECT_FALSE(Write(u"a", u"[k]", u"1"));
  EXPECT_FALSE(Write(u"a", u"[b", u"2]"));
  EXPECT_EQ(Bytes(), "[a]\r\n[b=1\r\n");
}

}  // namespace
}  // namespace platform::ini
