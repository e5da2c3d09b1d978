#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/curl/client_rig.h"
#include "tests/support/child_process.h"
#include "tests/support/icecast_server.h"
#include "tests/support/media_files.h"

namespace platform::curl {
namespace {

class Icecast : public testing::Test {
 protected:
  Icecast() {
    server_.Feed("/mp3", test_support::MakeTone(music_, "tone.mp3", "libmp3lame"), "mp3", "audio/mpeg");
    rig_.client->StreamUrl(Wide(server_.Url("/mp3")));
  }
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

  test_support::TempFolder music_;
  test_support::IcecastServer server_;
  ClientRig rig_;
};

TEST_F(Icecast, ReportsItsHeaders) {
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(0), Wide(test_support::IcecastServer::kStationName));
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(9), u"16000");
  EXPECT_EQ(rig_.client->GetStreamQueryInfo(10), u"audio/mpeg");
  EXPECT_FALSE(rig_.client->IsUrlPlaylist(Wide(server_.Url("/mp3"))));
}

TEST_F(Icecast, ItsTitlesAreReadAsTheyAreSet) {
  server_.SetTitle("/mp3", "Artist%20-%20Song");
  EXPECT_TRUE(Shows(u"Artist - Song"));
  server_.SetTitle("/mp3", "K%C3%BCche");
  EXPECT_TRUE(Shows(u"K\u00C3\u00BCche")) << "UTF-8 bytes through the ANSI code page";
}

TEST_F(Icecast, ARecordingByTitlePlays) {
  server_.SetTitle("/mp3", "Erster");
  ASSERT_TRUE(Shows(u"Erster"));
  bool second = false;
  rig_.client->RecStreamCurrentPlaying = [&](const Text& sStreamTitle, const Text&, const Text&) {
    if (sStreamTitle == u"Erster" && !second) server_.SetTitle("/mp3", "Zweiter");
    second = sStreamTitle == u"Zweiter";
  };
  const auto deadline = std::chrono::steady_clock::now() + 3 * kDeadline;
  rig_.loop.on_pump = [&] {
    const bool enough = second && rig_.folder.Read("Zweiter.mp3").size() > 8000;
    if (enough || std::chrono::steady_clock::now() > deadline) rig_.client->StopRecStream();
  };
  rig_.client->StartRecStream(rig_.client->GetStreamQueryInfo(10), rig_.client->GetStreamQueryInfo(9));
  for (const std::string name : {"Erster.mp3", "Zweiter.mp3"}) {
    const auto played = test_support::RunProgram(
        {"ffmpeg", "-v", "fatal", "-i", rig_.folder.Path() / name, "-f", "null", "-"});
    EXPECT_EQ(played.exit_code, 0) << name;
  }
}

}  // namespace
}  // namespace platform::curl
