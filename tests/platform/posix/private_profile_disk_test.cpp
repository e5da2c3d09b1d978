// The private-profile operations on this system's disk: permissions, links, time stamps, other programs.

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/profile_files.h"
#include "tests/platform/posix/ini_fixture.h"
#include "tests/support/ini_changed_by_others.h"

namespace platform::posix {
namespace {

Text Number(int number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

class PrivateProfileOnDisk : public IniFixture {
 protected:
  [[nodiscard]] struct stat Status() const {
    struct stat status {};
    EXPECT_EQ(::lstat((folder.Path() / "test.ini").c_str(), &status), 0);
    return status;
  }
  /// Writes 200 keys of its own, one by one, through an object of its own.
  static bool WriteKeys(const Text& prefix, const Text& path) {
    PosixNativePaths native_paths;
    PosixProfileFiles native_disk;
    icu::IcuTextConversion text_conversion;
    IniPrivateProfile other(native_paths, native_disk, text_conversion);
    for (int number = 0; number < 200; ++number) {
      if (!other.WritePrivateProfileStringW(u"a", prefix + Number(number), prefix, path)) return false;
    }
    return true;
  }
};

TEST_F(PrivateProfileOnDisk, PermissionsSurviveAReplacement) {
  Given("[a]\r\nk=1\r\n");
  Text value;
  for (const mode_t mode : {0600U, 0644U, 0664U}) {
    ASSERT_EQ(::chmod((folder.Path() / "test.ini").c_str(), mode), 0);
    EXPECT_TRUE(Write(u"a", u"k", value += u'x'));
    EXPECT_EQ(Status().st_mode & 07777U, mode);
  }
}

TEST_F(PrivateProfileOnDisk, ANewFileHasThePermissionsThatTheUserGivesToNewFiles) {
  const mode_t usual = ::umask(027);
  EXPECT_TRUE(Write(u"a", u"k", u"1"));
  ::umask(usual);
  EXPECT_EQ(Status().st_mode & 07777U, 0640U);
}

TEST_F(PrivateProfileOnDisk, ASymbolicLinkStaysOneAndItsTargetIsReplaced) {
  folder.Write("real/stations.ini", "[a]\r\nk=1\r\n");
  std::filesystem::create_symlink("real/stations.ini", folder.Path() / "middle");
  std::filesystem::create_symlink(folder.Path() / "middle", folder.Path() / "test.ini");
  EXPECT_TRUE(Write(u"a", u"k", u"2"));
  EXPECT_TRUE(S_ISLNK(Status().st_mode));
  EXPECT_EQ(folder.Read("real/stations.ini"), "[a]\r\nk=2\r\n");
  EXPECT_FALSE(std::filesystem::is_symlink(folder.Path() / "real/stations.ini"));
}

TEST_F(PrivateProfileOnDisk, ALinkToAMissingFileMakesThatFile) {
  std::filesystem::create_symlink("later.ini", folder.Path() / "test.ini");
  EXPECT_TRUE(Write(u"a", u"k", u"1"));
  EXPECT_TRUE(S_ISLNK(Status().st_mode));
  EXPECT_EQ(folder.Read("later.ini"), "[a]\r\nk=1\r\n");
}

TEST_F(PrivateProfileOnDisk, NothingIsLeftBesideTheFile) {
  EXPECT_TRUE(Write(u"a", u"k", u"1"));
  EXPECT_TRUE(Write(u"a", u"k", u"2"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST_F(PrivateProfileOnDisk, AChangeThatTheTimeStampDoesNotShowIsSeenWhileTheFileIsNew) {
  // Storing into a mapped page that is already changed leaves the stamp alone, as two changes within one step
  // of the clock do. A busy machine can let the file grow old between two lines, hence the repetitions.
  bool seen = false;
  for (int attempt = 0; attempt < 50 && !seen; ++attempt) {
    Given("[a]\r\nk=0\r\n");
    const FileDescriptor file(::open((folder.Path() / "test.ini").c_str(), O_RDWR));
    void* const page = ::mmap(nullptr, 10, PROT_READ | PROT_WRITE, MAP_SHARED, file.Get(), 0);
    ASSERT_NE(page, MAP_FAILED);
    char* const value = static_cast<char*>(page) + 7;
    *value = '1';
    const bool first = Read(u"a", u"k") == u"1";
    *value = '2';
    seen = first && Read(u"a", u"k") == u"2";
    ::munmap(page, 10);
  }
  EXPECT_TRUE(seen);
}

TEST_F(PrivateProfileOnDisk, APipeReadsAsMissingAtOnce) {
  ASSERT_EQ(::mkfifo((folder.Path() / "test.ini").c_str(), 0600), 0);
  EXPECT_EQ(Read(u"a", u"k"), u"(default)");
  EXPECT_EQ(Names(), "");
}

TEST_F(PrivateProfileOnDisk, TwoProgramsWritingDifferentKeysAtTheSameTimeBothSucceed) {
  Given("[a]\r\n");
  const pid_t other = ::fork();
  ASSERT_GE(other, 0);
  if (other == 0) ::_exit(WriteKeys(u"child", Path()) ? 0 : 1);
  EXPECT_TRUE(WriteKeys(u"parent", Path()));
  int status = 0;
  ASSERT_EQ(::waitpid(other, &status, 0), other);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  for (int number = 0; number < 200; ++number) {
    EXPECT_EQ(Read(u"a", u"child" + Number(number)), u"child");
    EXPECT_EQ(Read(u"a", u"parent" + Number(number)), u"parent");
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

}  // namespace
}  // namespace platform::posix

namespace test_support {

INSTANTIATE_TYPED_TEST_SUITE_P(RealDisk, IniChangedByOthers, platform::posix::IniFixture);

}  // namespace test_support
