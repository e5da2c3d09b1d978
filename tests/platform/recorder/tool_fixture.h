#pragma once
// A station on real sockets that plays two titles, a music folder for them, and an ear for what was recorded.
// Not for the rules of a recording; those are tested without sockets.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/icy_station.h"
#include "tests/support/media_files.h"
#include "tests/support/temp_folder.h"

namespace recorder {

using namespace std::chrono_literals;
using test_support::ChildProcess;
using test_support::WaitUntil;

constexpr auto kDeadline = 30s;
constexpr std::size_t kInterval = 4000;

inline test_support::Mp3Loop Tone() {
  const test_support::TempFolder folder;
  return test_support::Mp3Loop(
      test_support::ReadBytes(test_support::MakeTone(folder, "tone.mp3", "libmp3lame")));
}

inline test_support::IcyStation::Settings TwoTitles() {
  test_support::IcyStation::Settings settings;
  settings.name = "Testfunk";
  settings.titles = {"Eins: Zwei",
                     "K\xC3\xBC"
                     "che/Bad"};
  settings.title_time = 2s;
  settings.burst = 1s;
  settings.metaint = kInterval;
  return settings;
}

class Tool : public testing::Test {
 protected:
  Tool() { station_.Start(); }

  [[nodiscard]] std::filesystem::path Folder() const { return music_.Path() / "neu" / "Funkhausplayer"; }
  [[nodiscard]] std::vector<std::string> Files() const {
    std::vector<std::string> names;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(Folder(), missing)) {
      names.push_back(entry.path().filename());
    }
    return names;
  }
  [[nodiscard]] std::uintmax_t SizeOf(const std::string& name) const {
    std::error_code missing;
    const auto size = std::filesystem::file_size(Folder() / name, missing);
    return missing ? 0 : size;
  }

  // A file plays when all of its music but the cut frames at its ends is decoded, and its first second is the
  // tone and no silence.
  void ExpectToPlay(const std::string& name) const {
    constexpr double kSamplesPerSecond = 8000;
    const auto decoded = test_support::RunProgram(
        {"ffmpeg", "-v", "fatal", "-i", Folder() / name, "-f", "u8", "-ac", "1", "-ar", "8000", "-"});
    EXPECT_EQ(decoded.exit_code, 0) << name;
    const double expected = static_cast<double>(SizeOf(name)) / (loop_.BitRate() * 1000.0 / 8);
    EXPECT_GT(static_cast<double>(decoded.output.size()) / kSamplesPerSecond, expected - 0.15) << name;
    int peak = 0;
    for (const char sample : decoded.output.substr(0, static_cast<std::size_t>(kSamplesPerSecond / 4))) {
      peak = std::max(peak, std::abs(static_cast<unsigned char>(sample) - 128));
    }
    EXPECT_GT(peak, 20) << name << " is silent at its beginning";
  }

  [[nodiscard]] ChildProcess::Environment Surroundings(const char* qt_platform) const {
    return {{"XDG_MUSIC_DIR", music_.Path() / "neu"},
            {"DISPLAY", ""},
            {"WAYLAND_DISPLAY", ""},
            {"QT_QPA_PLATFORM", qt_platform}};
  }
  // Two titles that are long enough to be heard.
  [[nodiscard]] bool TwoTitlesAreRecorded() const {
    return SizeOf("Eins_ Zwei.mp3") > 2 * kInterval && SizeOf(
                                                           "K\xC3\xBC"
                                                           "che_Bad.mp3") > 2 * kInterval;
  }
  void ExpectTwoTitles() const {
    for (const std::string& name : Files()) {
      if (SizeOf(name) > 2 * kInterval) ExpectToPlay(name);
    }
    EXPECT_TRUE(TwoTitlesAreRecorded());
    EXPECT_TRUE(station_.WaitUntil([](const auto& counts) { return counts.listeners == 0; }, kDeadline));
  }

  test_support::TempFolder music_;
  test_support::Mp3Loop loop_ = Tone();
  test_support::IcyStation station_{loop_, TwoTitles()};
};

}  // namespace recorder
