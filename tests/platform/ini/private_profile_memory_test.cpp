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

TEST_F(PrivateProfileMemory, AGroupThatWritesManyFilesInTurnWritesToEachItsOwn) {
  constexpr int kFiles = 12;
  const auto path = [this](int number) { return folder.TextPath(std::to_string(number)); };
  const auto write = [&](int number, const Text& key) {
    EXPECT_TRUE(profile.WritePrivateProfileStringW(u"a", key, Text(1, static_cast<char16_t>(u'A' + number)),
                                                   path(number)));
  };
  {
    WriteGroup group(profile);
    for (int number = 0; number < kFiles; ++number) write(number, u"k");
    // Between two writes another file is looked at, and unchanged files leave the memory.
    for (int number = 0; number < kFiles; ++number) {
      EXPECT_FALSE(profile.CopySection(u"none", path(kFiles + number)));
      write(number, u"l");
    }
    EXPECT_TRUE(group.End());
  }
  for (int number = 0; number < kFiles; ++number) {
    const std::string value(1, static_cast<char>('A' + number));
    EXPECT_EQ(folder.Read(std::to_string(number)), "[a]\r\nk=" + value + "\r\nl=" + value + "\r\n");
  }
}

}  // namespace
}  // namespace platform::ini
