#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "tests/contracts/internet/client_rig.h"
#include "tests/support/child_process.h"
#include "tests/support/icy_station.h"
#include "tests/support/media_files.h"

namespace platform::curl {
namespace {

using test_support::AudioBytes;
using test_support::MetadataBlock;
using test_support::TitleBlock;

class Recording : public testing::Test {
 protected:
  // Records until `done`, which is called whenever messages are processed, returns true.
  void Record(const Text& interval, const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + 2 * kDeadline;
    rig_.loop.on_pump = [this, done, deadline] {
      if (done() || std::chrono::steady_clock::now() > deadline) rig_.client->StopRecStream();
    };
    rig_.client->StartRecStream(u"audio/mpeg", interval);
    EXPECT_LT(std::chrono::steady_clock::now(), deadline);
  }
  std::uintmax_t SizeOf(const std::string& name) {
    std::error_code missing;
    const auto size = std::filesystem::file_size(rig_.folder.Path() / name, missing);
    return missing ? 0 : size;
  }
  std::vector<std::string> Files() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(rig_.folder.Path())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }
  // Plays a file with ffmpeg; its length in seconds, 0 when it does not play.
  double SecondsOfMusic(const std::string& name) {
    const std::string path = rig_.folder.Path() / name;
    const auto played = test_support::RunProgram({"ffmpeg", "-v", "fatal", "-i", path, "-f", "null", "-"});
    const auto probed = test_support::RunProgram(
        {"ffprobe", "-v", "error", "-show_entries", "format=duration", "-of", "csv=p=0", path});
    return played.exit_code == 0 && probed.exit_code == 0 ? std::atof(probed.output.c_str()) : 0;
  }

  ClientRig rig_;
};

// A station that plays a tone made by ffmpeg, in real time.
class RecordingOfAStation : public Recording {
 protected:
  RecordingOfAStation() { station_.Start(); }

  static test_support::Mp3Loop Tone() {
    const test_support::TempFolder folder;
    std::ifstream file(test_support::MakeTone(folder, "tone.mp3", "libmp3lame"), std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return test_support::Mp3Loop(bytes.str());
  }
  static test_support::IcyStation::Settings ShortTitles() {
    test_support::IcyStation::Settings settings;
    settings.titles = {"Eins: Zwei",
                       "K\xC3\xBC"
                       "che/Bad",
                       "Drei"};
    settings.title_time = 1s;
    settings.metaint = 4000;
    return settings;
  }

  test_support::Mp3Loop loop_ = Tone();
  test_support::IcyStation station_{loop_, ShortTitles()};
};

TEST_F(RecordingOfAStation, ThePlainFileIsTheStreamItself) {
  rig_.client->StreamUrl(Wide(station_.Url()));
  Record(u"", [this] { return SizeOf("record.mp3") >= 100 * 512; });
  const std::string recorded = rig_.folder.Read("record.mp3");
  // The station has been playing for a moment when the recording starts.
  const auto continues_with = [&](std::size_t first) {
    std::string sent;
    for (std::size_t i = first; sent.size() < recorded.size(); ++i) sent += loop_.Frame(i);
    return sent.starts_with(recorded);
  };
  std::size_t first = 0;
  while (first < loop_.Count() && !continues_with(first)) ++first;
  EXPECT_LT(first, loop_.Count()) << "no stale bytes while the station plays";
  EXPECT_GT(SecondsOfMusic("record.mp3"), 2);
}

TEST_F(RecordingOfAStation, ATitleEachGivesFilesThatPlay) {
  std::vector<Text> titles;
  rig_.client->RecStreamCurrentPlaying = [&](const Text& sStreamTitle, const Text&, const Text&) {
    if (titles.empty() || titles.back() != sStreamTitle) titles.push_back(sStreamTitle);
  };
  rig_.client->StreamUrl(Wide(station_.Url()));
  Record(rig_.client->GetStreamQueryInfo(9), [&] { return titles.size() >= 4; });
  EXPECT_THAT(Files(), testing::Contains("Eins_ Zwei.mp3"));
  EXPECT_THAT(Files(), testing::Contains("Drei.mp3"));
  EXPECT_THAT(Files(), testing::Contains("K\xC3\x83\xC2\xBC"
                                         "che_Bad.mp3"))
      << "each byte of a title is a character";
  EXPECT_EQ(Files().size(), 3U);
  for (const std::string& name : Files()) {
    if (SizeOf(name) < 4000) continue;  // the one that was just begun
    EXPECT_GT(SecondsOfMusic(name), 0.1) << name;
  }
}

TEST_F(Recording, OfAnIcecastServerByTitlePlays) {
  under_test::Icecast server;
  rig_.client->StreamUrl(Wide(server.FeedTone("/mp3")));
  server.SetTitle("/mp3", "Erster");
  bool first = false;
  bool second = false;
  rig_.client->RecStreamCurrentPlaying = [&](const Text& sStreamTitle, const Text&, const Text&) {
    if (sStreamTitle == u"Erster" && !first) server.SetTitle("/mp3", "Zweiter");
    first = first || sStreamTitle == u"Erster";
    second = sStreamTitle == u"Zweiter";
  };
  const auto interval = rig_.client->GetStreamQueryInfo(9);
  Record(interval, [&] { return second && SizeOf("Zweiter.mp3") > 8000; });
  for (const std::string name : {"Erster.mp3", "Zweiter.mp3"}) EXPECT_GT(SecondsOfMusic(name), 0) << name;
}

TEST_F(Recording, WhatIsReadIsOnTheDiskAtOnce) {
  rig_.server.OnAny(Script().Send(kOk).Send(AudioBytes(512)).Hold());
  rig_.client->StreamUrl(Wide(rig_.server.Url()));
  Record(u"", [this] { return rig_.folder.Read("record.mp3") == AudioBytes(512); });
  EXPECT_EQ(rig_.folder.Read("record.mp3"), AudioBytes(512));
  EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
}

TEST_F(Recording, FilesBeginAndEndExactlyAtTheBlocks) {
  rig_.server.OnAny(Script().Send(kOk).Send(AudioBytes(16) + TitleBlock("Eins") + "1234567890123456" +
                                            MetadataBlock("") + "1234567890123456" + TitleBlock("Zwei") +
                                            "abc"));
  rig_.client->StreamUrl(Wide(rig_.server.Url()));
  Record(u"16", [this] { return SizeOf("Zwei.mp3") == 3; });
  EXPECT_EQ(rig_.folder.Read("Eins.mp3"), "12345678901234561234567890123456");
  EXPECT_EQ(rig_.folder.Read("Zwei.mp3"), "abc");
}

TEST_F(Recording, NoTitleLeavesTheFolder) {
  std::filesystem::create_directory(rig_.folder.Path() / "in");
  rig_.environment.program_folder = rig_.folder.TextPath("in");
  const std::string long_title(3000, 'x');
  Script script;
  script.Send(kOk);
  for (const std::string& title :
       {std::string("../out"), std::string("/tmp/../out"), std::string("..\\out"), std::string(".."),
        std::string("."), long_title, std::string("a\0b", 3), std::string("CON"), std::string("last")}) {
    script.Send("0123456789abcdef" + TitleBlock(title));
  }
  rig_.server.OnAny(script.Send("end"));
  rig_.client->StreamUrl(Wide(rig_.server.Url()));
  Record(u"16", [this] { return SizeOf("in/last.mp3") == 3; });
  EXPECT_THAT(Files(), testing::ElementsAre("in"));
  for (const std::string name : {".._out.mp3", "_tmp_.._out.mp3", "...mp3", "..mp3", "a_b.mp3", "CON_.mp3"}) {
    EXPECT_EQ(SizeOf("in/" + name), 16U) << name;
  }
  EXPECT_EQ(SizeOf("in/" + std::string(251, 'x') + ".mp3"), 16U);
}

TEST_F(Recording, ALinkIsNotFollowed) {
  const test_support::TempFolder elsewhere;
  const auto target = elsewhere.Write("victim", "untouched");
  std::filesystem::create_symlink(target, rig_.folder.Path() / "Link.mp3");
  std::filesystem::create_symlink(target, rig_.folder.Path() / "record.mp3");
  rig_.server.OnAny(Script().Send(kOk).Send(AudioBytes(16) + TitleBlock("Link")).Flood("x"));
  rig_.client->StreamUrl(Wide(rig_.server.Url()));
  Record(u"16", [] { return false; });
  Record(u"", [] { return false; });
  EXPECT_EQ(elsewhere.Read("victim"), "untouched");
}

TEST_F(Recording, AVanishedFolderEndsTheRecording) {
  std::filesystem::create_directory(rig_.folder.Path() / "gone");
  rig_.environment.program_folder = rig_.folder.TextPath("gone");
  rig_.server.OnAny(Script().Send(kOk).Flood(AudioBytes(16) + TitleBlock("Eins")));
  rig_.client->StreamUrl(Wide(rig_.server.Url()));
  for (const Text interval : {u"16", u""}) {
    std::filesystem::create_directory(rig_.folder.Path() / "gone");
    Record(interval, [this] {
      std::filesystem::remove_all(rig_.folder.Path() / "gone");
      return false;
    });
    EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
  }
  EXPECT_THAT(Files(), testing::IsEmpty());
}

}  // namespace
}  // namespace platform::curl
