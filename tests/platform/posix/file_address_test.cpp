#include "platform/posix/file_address.h"

#include <gtest/gtest.h>

namespace platform::posix {
namespace {

TEST(FileAddress, NamesTheFolder) {
  EXPECT_EQ(FileAddress("/home/u/Meine M\xC3\xBCsik"), u"file:///home/u/Meine%20M%C3%BCsik");
}

}  // namespace
}  // namespace platform::posix
