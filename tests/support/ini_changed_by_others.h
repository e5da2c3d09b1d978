#pragma once
// The cases in which another program changes an INI file, for the engine over any disk: a test program
// instantiates them for its fixture. Not for two programs that write at the same time.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "ports/text.h"

namespace test_support {

/// `Fixture` is an IniFixture (tests/support/ini_fixture.h).
template <typename Fixture>
class IniChangedByOthers : public Fixture {};

TYPED_TEST_SUITE_P(IniChangedByOthers);

TYPED_TEST_P(IniChangedByOthers, AChangeIsSeenByTheNextRead) {
  // The size stays the same and the changes follow each other faster than time stamps advance.
  for (int round = 0; round < 300; ++round) {
    const std::string value = std::to_string(100 + round);
    this->Given("[a]\r\nk=" + value + "\r\n");
    EXPECT_EQ(this->Read(u"a", u"k"), platform::Text(value.begin(), value.end()));
  }
}

TYPED_TEST_P(IniChangedByOthers, AFileThatIsReplacedRemovedOrMadeIsSeenByTheNextRead) {
  const std::filesystem::path file = this->folder.Path() / "test.ini";
  EXPECT_EQ(this->Read(u"a", u"k"), u"(default)");
  this->Given("[a]\r\nk=1\r\n");
  EXPECT_EQ(this->Read(u"a", u"k"), u"1");
  this->folder.Write("other.ini", "[a]\r\nk=2\r\n");
  std::filesystem::rename(this->folder.Path() / "other.ini", file);
  EXPECT_EQ(this->Read(u"a", u"k"), u"2");
  std::filesystem::remove(file);
  EXPECT_EQ(this->Read(u"a", u"k"), u"(default)");
}

REGISTER_TYPED_TEST_SUITE_P(IniChangedByOthers, AChangeIsSeenByTheNextRead,
                            AFileThatIsReplacedRemovedOrMadeIsSeenByTheNextRead);

}  // namespace test_support
