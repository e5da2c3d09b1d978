#pragma once
// What the tests of the INI operations share: one file in a scratch folder and short ways to ask about it.
// Not for expectations.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/ini/private_profile.h"
#include "tests/support/temp_folder.h"

namespace test_support {

/// The engine over a system's implementations of its ports.
template <typename Paths, typename Disk, typename Conversion>
class IniFixture : public testing::Test {
 protected:
  using Text = platform::Text;

  void Given(const std::string& bytes) { folder.Write("test.ini", bytes); }
  [[nodiscard]] std::string Bytes() const { return folder.Read("test.ini"); }
  [[nodiscard]] Text Path() const { return folder.TextPath("test.ini"); }

  Text Read(const Text& section, const Text& key, const Text& default_value = u"(default)") {
    std::vector<char16_t> buffer(4096, u'#');
    const auto count = profile.GetPrivateProfileStringW(section, key, default_value, buffer, Path());
    EXPECT_EQ(buffer.at(count), u'\0');
    return {buffer.data(), count};
  }
  bool Write(const Text& section, const Text& key, const Text& value) {
    return profile.WritePrivateProfileStringW(section, key, value, Path());
  }
  bool DeleteKey(const Text& section, const Text& key) {
    return profile.WritePrivateProfileStringW(section, key, std::nullopt, Path());
  }
  bool DeleteSection(const Text& section) {
    return profile.WritePrivateProfileStringW(section, std::nullopt, std::nullopt, Path());
  }
  /// The list of names with "|" in place of each NUL.
  std::string Names(std::size_t size = 4096) {
    std::vector<char> buffer(size, '#');
    const auto count = profile.GetPrivateProfileSectionNamesA(buffer, Path());
    std::string list(buffer.data(), count);
    for (char& byte : list) {
      if (byte == '\0') byte = '|';
    }
    return list;
  }

  static std::string Utf16(platform::TextView text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text) {
      bytes.push_back(static_cast<char>(unit & 0xFF));
      bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
  }

  TempFolder folder;
  Paths paths;
  Disk disk;
  Conversion conversion;
  platform::ini::IniPrivateProfile profile{paths, disk, conversion};
};

}  // namespace test_support
