// The program among the desktop's other programs: playerctl operates it over a real bus, while it plays a
// real station on a sound card that nobody hears.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "tests/program/later_start.h"
#include "tests/support/icy_station.h"
#include "tests/support/media_files.h"
#include "tests/support/private_bus.h"
#include "tests/support/pulse_server.h"

namespace program_test {
namespace {

using namespace std::chrono_literals;
using test_support::WaitUntil;

constexpr auto kSoon = 40s;

class DesktopProgram : public ::testing::Test {
 protected:
  DesktopProgram() {
    station_.Start();
    folder_.Write("Ordnerzentrale/Funkhaus.ini",
                  Section("Radio A", station_.Url()) + Section("Radio B", station_.Url("/station.pls")));
    surroundings_ =
        surroundings_.With("DBUS_SESSION_BUS_ADDRESS", bus_.Address()).With("PULSE_SERVER", sound_.Address());
    program_ = surroundings_.Start();
  }
  static std::string Section(const std::string& name, const std::string& link) {
    return "[" + name + "]\r\nStation=" + name + "\r\nLink=" + link +
           "\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\n";
  }
  static test_support::IcyStation::Settings TwoTitles() {
    test_support::IcyStation::Settings settings;
    settings.titles = {"Künstler - Lied"};
    settings.burst = 1s;
    settings.metaint = 4000;
    return settings;
  }
  /// What playerctl says, without the line's end.
  std::string Playerctl(const std::string& words) const {
    std::string output = test_support::RunProgram(
                             {"/bin/sh", "-c", "exec playerctl -p funkhausplayer " + words + " 2>/dev/null"},
                             bus_.Environment())
                             .output;
    while (!output.empty() && output.back() == '\n') output.pop_back();
    return output;
  }
  bool Says(const std::string& words, const std::string& answer) const {
    return WaitUntil([&] { return Playerctl(words) == answer; }, kSoon);
  }
  [[nodiscard]] bool Sounds() const {
    return WaitUntil(
        [this] {
          const auto stream = sound_.FindStream("Funkhausplayer");
          return stream && !stream->corked;
        },
        kSoon);
  }
  /// What the program is doing, by its threads; none when it has ended.
  [[nodiscard]] std::string Threads() const {
    std::string names;
    std::error_code ended;
    const std::string tasks = "/proc/" + std::to_string(program_.Pid()) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks, ended)) {
      std::string name;
      std::getline(std::ifstream(task.path() / "comm") >> std::ws, name);
      names += name + ", ";
    }
    return names;
  }
  void Quit() const {
    test_support::RunProgram(
        {"gdbus", "call", "--session", "--dest", "org.mpris.MediaPlayer2.funkhausplayer", "--object-path",
         "/org/mpris/MediaPlayer2", "--method", "org.mpris.MediaPlayer2.Quit"},
        bus_.Environment());
  }

  test_support::TempFolder folder_;
  test_support::PulseServer sound_;
  test_support::PrivateBus bus_;
  test_support::IcyStation station_{test_support::Mp3Loop(test_support::ReadBytes(
                                        test_support::MakeTone(folder_, "ton.mp3", "libmp3lame"))),
                                    TwoTitles()};
  Surroundings surroundings_{folder_};
  test_support::ChildProcess program_;
};

TEST_F(DesktopProgram, PlayerctlPlaysWalksSetsTheVolumeAndStops) {
  ASSERT_TRUE(Says("status", "Stopped"));
  Playerctl("play");
  ASSERT_TRUE(Says("status", "Playing")) << "the first station, as none is marked";
  EXPECT_TRUE(Says("metadata xesam:album", "Radio A"));
  EXPECT_TRUE(Says("metadata xesam:artist", "Künstler"));
  EXPECT_EQ(Playerctl("metadata xesam:title"), "Lied");
  EXPECT_EQ(Playerctl("metadata xesam:url"), station_.Url());
  // Before it sounds the window takes the volume that the mixer remembers.
  ASSERT_TRUE(Sounds());
  Playerctl("volume 0.3");
  EXPECT_TRUE(WaitUntil(
      [&] {
        const auto stream = sound_.FindStream("Funkhausplayer");
        return stream && stream->volume_percent == 30;
      },
      kSoon));
  EXPECT_TRUE(Says("volume", "0.300000"));
  Playerctl("next");
  EXPECT_TRUE(Says("metadata xesam:album", "Radio B"));
  EXPECT_TRUE(Says("status", "Playing"));
  EXPECT_TRUE(Sounds());
  Playerctl("stop");
  EXPECT_TRUE(Says("status", "Stopped"));
  EXPECT_TRUE(station_.WaitUntil([](const auto& counts) { return counts.listeners == 0; }, kSoon));
  Quit();
  EXPECT_EQ(program_.WaitForExit(), 0);
}

TEST_F(DesktopProgram, BusThatEndsInTheMiddleDoesNotEndTheProgram) {
  ASSERT_TRUE(Says("status", "Stopped"));
  Playerctl("play");
  ASSERT_TRUE(station_.WaitUntil([](const auto& counts) { return counts.listeners > 0; }, kSoon));
  bus_.Stop();
  EXPECT_TRUE(WaitUntil([&] { return sound_.FindStream("Funkhausplayer").has_value(); }, kSoon))
      << Threads() << station_.Count().listeners << " listen, of " << station_.Count().all_listeners;
  EXPECT_TRUE(EndsOrderly(program_));
}

TEST_F(DesktopProgram, BusThatEndsWhileAStationPlaysStopsNothing) {
  ASSERT_TRUE(Says("status", "Stopped"));
  Playerctl("play");
  ASSERT_TRUE(Sounds());
  bus_.Stop();
  // The connections of libraries notice it a moment later.
  EXPECT_FALSE(WaitUntil([&] { return !program_.Running(); }, 3s));
  EXPECT_TRUE(Sounds());
  EXPECT_TRUE(EndsOrderly(program_));
}

}  // namespace
}  // namespace program_test
