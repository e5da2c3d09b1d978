// Copying a whole section out of a file and putting it back after it was deleted.

#include <filesystem>

#include "platform/ini/private_profile.h"
#include "profile_under_test.h"

namespace platform::ini {
namespace {

constexpr const char* kFile =
    "; top\r\n[a]\r\nk=1\r\n[ b ] tail\r\n; comment\r\nForeign = x \r\n\r\n[c]\r\nk=3";

class PrivateProfileSection : public IniFixture {
 protected:
  std::optional<ProfileSection> Copy(const Text& section) { return profile.CopySection(section, Path()); }
  bool Insert(const ProfileSection& section) { return profile.InsertSection(section, Path()); }
};

TEST_F(PrivateProfileSection, CopyHoldsEveryLineAndTheNameOfTheSectionBehind) {
  Given(kFile);
  EXPECT_EQ(Copy(u"B"), (ProfileSection{u"[ b ] tail\r\n; comment\r\nForeign = x \r\n\r\n", u"c"}));
  EXPECT_EQ(Copy(u"c"), (ProfileSection{u"[c]\r\nk=3", std::nullopt}));
  EXPECT_EQ(Copy(u"d"), std::nullopt);
  EXPECT_EQ(Bytes(), kFile);
}

TEST_F(PrivateProfileSection, CopyOfAMissingFileIsNothing) {
  EXPECT_EQ(Copy(u"a"), std::nullopt);
  EXPECT_EQ(profile.CopySection(u"a", u""), std::nullopt);
}

TEST_F(PrivateProfileSection, DeletedSectionComesBackByteForByteInItsPlace) {
  for (const char16_t* name : {u"a", u"b", u"c"}) {
    Given(kFile);
    const auto copy = Copy(name);
    ASSERT_TRUE(copy && DeleteSection(name));
    ASSERT_NE(Bytes(), kFile);
    EXPECT_TRUE(Insert(*copy));
    EXPECT_EQ(Bytes(), kFile);
  }
}

TEST_F(PrivateProfileSection, CopySeesChangesThatWereCollectedInAGroup) {
  Given(kFile);
  WriteGroup group(profile);
  EXPECT_TRUE(Write(u"a", u"l", u"2"));
  EXPECT_TRUE(DeleteSection(u"b"));
  EXPECT_EQ(Copy(u"a"), (ProfileSection{u"[a]\r\nk=1\r\nl=2\r\n", u"c"}));
  EXPECT_EQ(Copy(u"b"), std::nullopt);
}

TEST_F(PrivateProfileSection, SectionWhoseFollowerIsGoneComesBackAtTheEnd) {
  Given(kFile);
  const auto copy = Copy(u"b");
  ASSERT_TRUE(copy && DeleteSection(u"b") && DeleteSection(u"c"));
  EXPECT_TRUE(Insert(*copy));
  EXPECT_EQ(Bytes(), "; top\r\n[a]\r\nk=1\r\n[ b ] tail\r\n; comment\r\nForeign = x \r\n\r\n");
}

TEST_F(PrivateProfileSection, MissingLineEndIsAddedWhereLinesFollow) {
  Given("[a]\nk=1");
  EXPECT_TRUE(Insert({u"[b]\nk=2", std::nullopt}));
  EXPECT_EQ(Bytes(), "[a]\nk=1\n[b]\nk=2");
  EXPECT_TRUE(Insert({u"[c]", u"b"}));
  EXPECT_EQ(Bytes(), "[a]\nk=1\n[c]\n[b]\nk=2");
}

TEST_F(PrivateProfileSection, OfEqualSectionsTheFirstIsCopiedAndPutBackInFront) {
  Given("[a]\nk=1\n[a]\nk=2\n");
  const auto copy = Copy(u"a");
  ASSERT_TRUE(copy && DeleteSection(u"a"));
  EXPECT_EQ(Read(u"a", u"k"), u"2");
  EXPECT_TRUE(Insert(*copy));
  EXPECT_EQ(Bytes(), "[a]\nk=1\n[a]\nk=2\n");
}

TEST_F(PrivateProfileSection, InsertedSectionIsInTheFilesEncoding) {
  Given(Utf16(u"[a]\r\nk=Ω\r\n[b]\r\n"));
  const auto copy = Copy(u"a");
  ASSERT_TRUE(copy && DeleteSection(u"a"));
  EXPECT_TRUE(Insert(*copy));
  EXPECT_EQ(Bytes(), Utf16(u"[a]\r\nk=Ω\r\n[b]\r\n"));
  std::filesystem::remove(folder.Path() / "test.ini");
  EXPECT_TRUE(Insert(*copy)) << "a new file is made, in the code page";
  EXPECT_EQ(Bytes(), "[a]\r\nk=?\r\n");
}

TEST_F(PrivateProfileSection, LinesWithoutAHeaderAreRefused) {
  Given(kFile);
  for (const char16_t* lines : {u"", u"k=1\r\n", u"\r\n[d]\r\n", u"[open"}) {
    EXPECT_FALSE(Insert({lines, std::nullopt}));
  }
  EXPECT_FALSE(profile.InsertSection({u"[d]\r\n", std::nullopt}, u""));
  EXPECT_EQ(Bytes(), kFile);
}

TEST_F(PrivateProfileSection, InsertionIsMadeOnTopOfWhatAnotherProgramWroteMeanwhile) {
  Given("[a]\r\nk=1\r\n[b]\r\n");
  WriteGroup group(profile);
  EXPECT_TRUE(Insert({u"[n]\r\n", u"b"}));
  Given("[a]\r\nk=2\r\n[b]\r\n[c]\r\n");
  EXPECT_TRUE(group.End());
  EXPECT_EQ(Bytes(), "[a]\r\nk=2\r\n[n]\r\n[b]\r\n[c]\r\n");
}

TEST_F(PrivateProfileSection, OnAFullDiskTheFileIsWhatItWas) {
  Given(kFile);
  disk.is_full = true;
  EXPECT_FALSE(Insert({u"[n]\r\n", u"b"}));
  EXPECT_EQ(Bytes(), kFile);
  EXPECT_EQ(Copy(u"n"), std::nullopt) << "nor does the failed change show in later reads";
}

}  // namespace
}  // namespace platform::ini
