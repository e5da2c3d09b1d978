#include "platform/posix/folder_address.h"

#include <gtest/gtest.h>

namespace platform::posix {
namespace {

TEST(FolderAddress, NamesTheFolder) {
  EXPECT_EQ(FolderAddress("/home/u/Meine M\xC3\xBCsik"), u"file:///home/u/Meine%20M%C3%BCsik");
}

}  // namespace
}  // namespace platform::posix
