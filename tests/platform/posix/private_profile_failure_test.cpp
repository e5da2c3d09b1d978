// What the private-profile operations do when the disk or the user's rights prevent them.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/posix/file_descriptor.h"
#include "tests/platform/posix/child_process.h"
#include "tests/platform/posix/ini_fixture.h"

namespace platform::posix {
namespace {

constexpr const char* kBefore = "[a]\r\nk=1\r\n";

class PrivateProfileFailure : public IniFixture {
 protected:
  void SetMode(const std::string& name, mode_t mode) {
    ASSERT_EQ(::chmod((folder.Path() / name).c_str(), mode), 0);
  }
  /// Everybody can reach the scratch folder, and the file belongs to the user without rights.
  void GivenForNobody(const std::string& bytes) {
    Given(bytes);
    SetMode("", 0777);
    if (::geteuid() != 0) return;
    ASSERT_EQ(::chown((folder.Path() / "test.ini").c_str(), kNobody, kNobody), 0);
  }
  [[nodiscard]] std::ptrdiff_t Entries() const {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  }
};

TEST_F(PrivateProfileFailure, AFolderThatDoesNotExist) {
  const Text path = folder.TextPath() + u"\\missing\\test.ini";
  EXPECT_FALSE(profile.WritePrivateProfileStringW(u"a", u"k", u"1", path));
  EXPECT_TRUE(profile.WritePrivateProfileStringW(u"a", u"k", std::nullopt, path));
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "missing"));
  std::vector<char16_t> buffer(10);
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"no", buffer, path), 2U);
}

TEST_F(PrivateProfileFailure, AFileInTheFoldersPlace) {
  Given(kBefore);
  const Text path = Path() + u"\\inner.ini";
  EXPECT_FALSE(profile.WritePrivateProfileStringW(u"a", u"k", u"2", path));
  EXPECT_EQ(Bytes(), kBefore);
}

TEST_F(PrivateProfileFailure, AnUnusablePath) {
  EXPECT_FALSE(profile.WritePrivateProfileStringW(u"a", u"k", u"1", u""));
  EXPECT_FALSE(profile.WritePrivateProfileStringW(u"a", u"k", u"1", Path() + Text(u"\0x", 2)));
  EXPECT_EQ(Entries(), 0);
}

TEST_F(PrivateProfileFailure, AReadOnlyFileIsWhatItWas) {
  GivenForNobody(kBefore);
  SetMode("test.ini", 0444);
  EXPECT_EQ(RunWithoutRights([&] { return Write(u"a", u"k", u"2"); }), ChildResult::kFalse);
  EXPECT_EQ(Bytes(), kBefore);
  EXPECT_EQ(Entries(), 1);
  SetMode("test.ini", 0644);
  EXPECT_EQ(RunWithoutRights([&] { return Write(u"a", u"k", u"2"); }), ChildResult::kTrue);
  EXPECT_EQ(Bytes(), "[a]\r\nk=2\r\n");
}

TEST_F(PrivateProfileFailure, AFileInAReadOnlyFolderIsWhatItWas) {
  GivenForNobody(kBefore);
  SetMode("", 0555);
  EXPECT_EQ(RunWithoutRights([&] { return Write(u"a", u"k", u"2"); }), ChildResult::kFalse);
  SetMode("", 0755);
  EXPECT_EQ(Bytes(), kBefore);
  EXPECT_EQ(Entries(), 1);
}

TEST_F(PrivateProfileFailure, AFileThatMayNotBeReadIsNotReplaced) {
  GivenForNobody(kBefore);
  SetMode("test.ini", 0200);
  EXPECT_EQ(RunWithoutRights([&] { return Write(u"a", u"k", u"2"); }), ChildResult::kFalse);
  SetMode("test.ini", 0644);
  EXPECT_EQ(Bytes(), kBefore);
}

TEST_F(PrivateProfileFailure, OnAFullDiskTheFileIsWhatItWasAndNothingIsLeftBesideIt) {
  Given(kBefore);
  const Text long_value(100000, u'x');
  const auto check = [&] {
    if (Write(u"a", u"k", long_value)) return false;
    // The failed change must not show in later reads either.
    return Read(u"a", u"k") == u"1" && Write(u"a", u"k", u"2");
  };
  EXPECT_EQ(RunWithFullDisk(4096, check), ChildResult::kTrue);
  EXPECT_EQ(Bytes(), "[a]\r\nk=2\r\n");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(PrivateProfileFailure, OnAFullDiskANewFileIsNotMade) {
  const Text long_value(100000, u'x');
  EXPECT_EQ(RunWithFullDisk(4096, [&] { return Write(u"a", u"k", long_value); }), ChildResult::kFalse);
  EXPECT_EQ(Entries(), 0);
}

TEST_F(PrivateProfileFailure, AFolderInTheFilesPlaceStays) {
  std::filesystem::create_directory(folder.Path() / "test.ini");
  EXPECT_FALSE(Write(u"a", u"k", u"1"));
  EXPECT_FALSE(DeleteKey(u"a", u"k"));
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "test.ini"));
  EXPECT_EQ(Entries(), 1);
}

TEST_F(PrivateProfileFailure, ADeviceOrPipeInTheFilesPlaceStays) {
  ASSERT_EQ(::mkfifo((folder.Path() / "test.ini").c_str(), 0600), 0);
  EXPECT_FALSE(Write(u"a", u"k", u"1"));
  EXPECT_TRUE(std::filesystem::is_fifo(folder.Path() / "test.ini"));
  EXPECT_FALSE(profile.WritePrivateProfileStringW(u"a", u"k", u"1", u"\\dev\\null"));
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(PrivateProfileFailure, LinksInACircleAreAFailure) {
  std::filesystem::create_symlink("test.ini", folder.Path() / "test.ini");
  EXPECT_FALSE(Write(u"a", u"k", u"1"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "test.ini"));
}

TEST_F(PrivateProfileFailure, TheOwnerSurvivesWhenTheAdministratorWrites) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can give files away";
  GivenForNobody(kBefore);
  SetMode("test.ini", 0640);
  EXPECT_TRUE(Write(u"a", u"k", u"2"));
  struct stat status {};
  ASSERT_EQ(::stat((folder.Path() / "test.ini").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, kNobody);
  EXPECT_EQ(status.st_gid, kNobody);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST_F(PrivateProfileFailure, AFolderThatAnotherProgramKeepsLockedIsAFailureAfterAWhile) {
  Given(kBefore);
  const FileDescriptor other(::open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY));
  ASSERT_EQ(::flock(other.Get(), LOCK_EX), 0);
  EXPECT_FALSE(Write(u"a", u"k", u"2"));
  EXPECT_EQ(Bytes(), kBefore);
  ASSERT_EQ(::flock(other.Get(), LOCK_UN), 0);
  EXPECT_TRUE(Write(u"a", u"k", u"2"));
}

TEST_F(PrivateProfileFailure, WhereFilesHaveNoPermissionsEverySaveSucceeds) {
  const auto save_twice = [&] { return Write(u"a", u"k", u"1") && Write(u"a", u"k", u"2"); };
  EXPECT_EQ(RunWithoutFilePermissions(save_twice), ChildResult::kTrue);
  EXPECT_EQ(Bytes(), "[a]\r\nk=2\r\n");
  EXPECT_EQ(Entries(), 1);
}

}  // namespace
}  // namespace platform::posix
