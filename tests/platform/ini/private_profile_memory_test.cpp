// How many files the engine keeps in memory. Over the plain disk alone: a real one also knows when a file was
// made, so that one which a test has just made is read again in any case.

#include <chrono>
#include <filesystem>

#include "platform/ini/private_profile.h"
#include "profile_under_test.h"

namespace platform::ini {
namespace {

class PrivateProfileMemory : public IniFixture {};

TEST_F(PrivateProfileMemory, EightFilesAreKeptInMemoryAndNoMore) {
  const auto read = [this](int number) {
    const std::string name = std::to_string(number);
    if (number >= disk.reads) {
      const std::filesystem::path file = folder.Path() / name;
      folder.Write(name, "[a]\r\nk=1\r\n");
      std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) - std::chrono::hours(1));
    }
    std::vector<char16_t> buffer(10);
    EXPECT_EQ(profile.GetPrivateProfileStringW(u"a", u"k", u"", buffer, folder.TextPath(name)), 1U);
  };
  for (int number = 0; number < 8; ++number) read(number);
  for (int number = 0; number < 8; ++number) read(number);
  EXPECT_EQ(disk.reads, 8);
  read(8);
  read(0);
  EXPECT_EQ(disk.reads, 10);
}

}  // namespace
}  // namespace platform::ini
