#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/contracts/internet/client_rig.h"

namespace platform {
namespace {

class Icecast : public testing::Test {
 protected:
  Icecast() { rig_.client->StreamUrl(Wide(address_)); }
  Text ReadTitle() {
    const auto interval = rig_.client->GetStreamQueryInfo(9);
    return rig_.client->ReadStreamMetaData2(std::stoi(test_support::Ascii(interval)));
  }
  // Reads until the title is there; the server keeps old ones in its burst for some seconds.
  bool Shows(const Text& title) {
    const auto deadline = std::chrono::steady_clock::now() + 3 * kDeadline;
    while (ReadTitle() != title) {
      if (std::chrono::steady_clock::now() > deadline) return false;
    }
    return true;
  }

  under_test::Icecast server_;
  const std::string address_ = server_.FeedTone("/mp3");
  ClientRig rig_;
};

TEST_F(Icecast, ReportsItsHeaders) {
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(0), Wide("Testsender"));
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(9), u"16000");
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(10), u"audio/mpeg");
  EXPECT_FALSE(rig_.client->IsUrlPlaylist(Wide(address_)));
}

TEST_F(Icecast, ItsTitlesAreReadAsTheyAreSet) {
  server_.SetTitle("/mp3", "Artist%20-%20Song");
  EXPECT_TRUE(Shows(u"Artist - Song"));
  server_.SetTitle("/mp3", "K%C3%BCche");
  EXPECT_TRUE(Shows(u"K\u00C3\u00BCche")) << "UTF-8 bytes through the ANSI code page";
}

}  // namespace
}  // namespace platform
