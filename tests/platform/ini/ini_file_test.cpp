// When an INI file is read from the disk, and when it is replaced there.
#include "platform/ini/ini_file.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

#include "tests/support/plain_text_conversion.h"

namespace platform::ini {
namespace {

/// One file in memory that counts what is asked of it. Its stamp is the number of its changes.
class CountingDisk final : public ProfileFiles {
 public:
  void Put(std::string contents) {
    bytes = std::move(contents);
    ++changes;
  }

  std::pair<ProfileReading, FileStamp> Stamp(const std::string&) override {
    return {bytes ? ProfileReading::kRead : ProfileReading::kMissing, State().stamp};
  }
  ProfileBytes Read(const std::string&, std::size_t) override {
    ++reads;
    if (!bytes) return {ProfileReading::kMissing, {}, {}};
    return {ProfileReading::kRead, *bytes, State()};
  }
  std::optional<FileState> Replace(const std::string&, std::string_view contents) override {
    if (throws) throw std::runtime_error("no memory");
    ++replacements;
    Put(std::string(contents));
    return State();
  }
  ProfileLocking Lock(const std::string&) override {
    ++locks;
    return {locking, ProfileLock{1}};
  }
  void Unlock(ProfileLock) override {}

  std::optional<std::string> bytes;
  bool is_fresh = false;
  bool throws = false;
  ProfileLocking::Result locking = ProfileLocking::Result::kHeld;
  std::uint64_t changes = 0;
  int reads = 0;
  int replacements = 0;
  int locks = 0;

 private:
  [[nodiscard]] FileState State() const { return {FileStamp{{changes}}, is_fresh}; }
};

class IniFileTest : public testing::Test {
 protected:
  std::optional<Text> Value() { return file_.Read().Value(u"a", u"k"); }
  bool Write(const Text& value) { return file_.Collect({u"a", u"k", value}) && file_.Write(); }

  CountingDisk disk_;
  test_support::PlainTextConversion conversion_;
  IniFile file_{disk_, conversion_, "x.ini"};
};

TEST_F(IniFileTest, AMissingFileIsReadOnce) {
  EXPECT_EQ(Value(), std::nullopt);
  EXPECT_EQ(Value(), std::nullopt);
  EXPECT_EQ(disk_.reads, 1);
}

TEST_F(IniFileTest, AnUnchangedFileIsReadOnce) {
  disk_.Put("[a]\nk=1\n");
  EXPECT_EQ(Value(), u"1");
  EXPECT_EQ(Value(), u"1");
  EXPECT_EQ(disk_.reads, 1);
  disk_.Put("[a]\nk=2\n");
  EXPECT_EQ(Value(), u"2");
  EXPECT_EQ(disk_.reads, 2);
}

TEST_F(IniFileTest, TheBytesOfAFreshFileAreLookedAtUntilItIsNoLongerFresh) {
  disk_.Put("[a]\nk=1\n");
  disk_.is_fresh = true;
  Value();
  Value();
  EXPECT_EQ(disk_.reads, 2) << "looked at, and not parsed again";
  disk_.is_fresh = false;
  Value();
  EXPECT_EQ(disk_.reads, 3);
  Value();
  EXPECT_EQ(disk_.reads, 3);
}

TEST_F(IniFileTest, AChangeOfAFreshFileThatItsStampDoesNotShowIsSeen) {
  disk_.Put("[a]\nk=1\n");
  disk_.is_fresh = true;
  EXPECT_EQ(Value(), u"1");
  disk_.bytes = "[a]\nk=2\n";
  EXPECT_EQ(Value(), u"2");
}

TEST_F(IniFileTest, WhatWasWrittenIsNotReadAgain) {
  EXPECT_TRUE(Write(u"1"));
  EXPECT_EQ(disk_.reads, 1) << "to see that it was missing";
  EXPECT_EQ(Value(), u"1");
  EXPECT_TRUE(Write(u"2"));
  EXPECT_EQ(Value(), u"2");
  EXPECT_EQ(disk_.reads, 1);
}

TEST_F(IniFileTest, WhatWasJustWrittenIsLookedAtAndNotParsedAgain) {
  disk_.is_fresh = true;
  EXPECT_TRUE(Write(u"1"));
  EXPECT_EQ(disk_.reads, 1);
  Value();
  EXPECT_EQ(disk_.reads, 2);
}

TEST_F(IniFileTest, AValueThatWasWrittenAlreadyIsNotWrittenAgain) {
  EXPECT_TRUE(Write(u"1"));
  EXPECT_TRUE(Write(u"1"));
  EXPECT_EQ(disk_.replacements, 1);
}

TEST_F(IniFileTest, WithoutAChangeNothingIsLocked) {
  EXPECT_TRUE(file_.Write());
  EXPECT_EQ(disk_.locks, 0);
}

TEST_F(IniFileTest, WithoutAFolderNothingIsReplacedAndOnlyAChangeFails) {
  disk_.locking = ProfileLocking::Result::kNoFolder;
  EXPECT_FALSE(Write(u"1"));
  EXPECT_EQ(disk_.replacements, 0);
  EXPECT_TRUE(file_.Collect({u"a", u"k", std::nullopt}) && file_.Write());
}

TEST_F(IniFileTest, WithoutTheLockNothingIsReplaced) {
  disk_.locking = ProfileLocking::Result::kFailed;
  EXPECT_FALSE(Write(u"1"));
  EXPECT_EQ(disk_.replacements, 0);
}

TEST_F(IniFileTest, AChangeThatIsRefusedIsNotCollected) {
  EXPECT_FALSE(file_.Collect({u"a", u"k=l", u"1"}));
  EXPECT_FALSE(file_.HasCollected());
}

TEST_F(IniFileTest, AbandoningNothingForgetsNothing) {
  disk_.Put("[a]\nk=1\n");
  Value();
  file_.Abandon();
  EXPECT_EQ(Value(), u"1");
  EXPECT_EQ(disk_.reads, 1);
}

TEST_F(IniFileTest, AWriteThatIsCutShortByAnExceptionHasFailedAndIsForgotten) {
  disk_.Put("[a]\nk=1\n");
  disk_.throws = true;
  EXPECT_FALSE(Write(u"2"));
  EXPECT_EQ(Value(), u"1");
  EXPECT_FALSE(file_.HasCollected());
}

TEST_F(IniFileTest, LineEndIsThatOfTheFirstLineThatIsLeft) {
  disk_.Put("[b]\nk=1\n[a]\r\nk=2\r\n");
  EXPECT_TRUE(file_.Collect({u"b", std::nullopt, std::nullopt}) && file_.Write());
  EXPECT_TRUE(file_.Collect({u"a", u"l", u"3"}) && file_.Write());
  EXPECT_EQ(disk_.bytes, "[a]\r\nk=2\r\nl=3\r\n");
}

}  // namespace
}  // namespace platform::ini
