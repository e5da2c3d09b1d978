// The recording tool against a station on real sockets, with real files: its recording and the program.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/icu/text_conversion.h"
#include "platform/posix/clock.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/record_files.h"
#include "recorder/station_recording.h"
#include "tests/support/child_process.h"
#include "tests/support/fakes.h"
#include "tests/support/icy_station.h"
#include "tests/support/media_files.h"
#include "tests/support/temp_folder.h"

namespace recorder {
namespace {

using namespace std::chrono_literals;
using platform::Text;
using test_support::ChildProcess;
using test_support::WaitUntil;

constexpr auto kDeadline = 30s;
constexpr std::size_t kInterval = 4000;

test_support::Mp3Loop Tone() {
  const test_support::TempFolder folder;
  return test_support::Mp3Loop(
      test_support::ReadBytes(test_support::MakeTone(folder, "tone.mp3", "libmp3lame")));
}

test_support::IcyStation::Settings TwoTitles() {
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

// The recording inside the test's own process.
class RecordingItself : public Tool {
 protected:
  // Records until `done`, asked in every pump, says so.
  void Record(const std::string& link, const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    message_loop_.on_sleep = [](std::uint32_t time) {
      std::this_thread::sleep_for(std::chrono::milliseconds(time));
    };
    message_loop_.on_pump = [this, done, deadline] {
      if (done() || std::chrono::steady_clock::now() > deadline) recording_.Stop();
    };
    recording_.Run(Text(link.begin(), link.end()));
    EXPECT_LT(std::chrono::steady_clock::now(), deadline);
  }

  test_support::FakeMessageLoop message_loop_;
  platform::icu::IcuTextConversion conversion_;
  platform::posix::PosixNativePaths paths_;
  platform::posix::PosixFiles files_{paths_};
  platform::posix::PosixRecordFiles record_files_{paths_};
  platform::posix::PosixClock clock_;
  test_support::FakeEnvironment environment_;
  platform::curl::CurlInternet internet_{message_loop_, conversion_};
  platform::curl::CurlXmlHttpRequests requests_{conversion_};
  StationRecording recording_{
      {{internet_, requests_, record_files_, environment_, clock_, message_loop_, conversion_}, files_},
      paths_.FromNative(Folder()),
      {2, 1}};
};

TEST_F(RecordingItself, FilesOfTitlesPlayFromTheirFirstSecond) {
  Record(station_.Url(), [this] { return TwoTitlesAreRecorded(); });
  ExpectTwoTitles();
  EXPECT_EQ(recording_.GetStatus().station, u"Testfunk");
}

TEST_F(RecordingItself, ALostConnectionIsTakenUpAgainAndWhatWasRecordedStays) {
  std::string before;
  Record(station_.Url("/stream"), [this, &before] {
    if (before.empty() && SizeOf("Eins_ Zwei.mp3") > 2 * kInterval) {
      station_.Stop();
      before = test_support::ReadBytes(Folder() / "Eins_ Zwei.mp3");
      station_.Start();
    }
    return !before.empty() && recording_.GetStatus().files >= 2 && SizeOf("Eins_ Zwei.mp3") > 0 &&
           station_.Count().all_listeners >= 2 &&
           recording_.GetStatus().bytes > before.size() + 4 * kInterval;
  });
  EXPECT_TRUE(test_support::ReadBytes(Folder() / "Eins_ Zwei.mp3").starts_with(before));
  EXPECT_GE(Files().size(), 2U);
  ExpectToPlay("Eins_ Zwei.mp3");
}

// The program as the player's button starts it.
class Program : public Tool {
 protected:
  // Runs the program until two titles are recorded, asks it to end, and gives its exit code.
  int RunUntilTwoTitles(const ChildProcess::Arguments& arguments, const char* qt_platform, int signal) {
    ChildProcess program(arguments, Surroundings(qt_platform));
    EXPECT_TRUE(WaitUntil([&] { return TwoTitlesAreRecorded(); }, kDeadline));
    program.Signal(signal);
    return program.WaitForExit();
  }
};

TEST_F(Program, RecordsOnATerminalUntilItIsAskedToEnd) {
  EXPECT_EQ(RunUntilTwoTitles({RECORDING_TOOL, station_.Url()}, "", SIGTERM), 0);
  ExpectTwoTitles();
}

TEST_F(Program, RecordsAPlaylistUntilCtrlC) {
  EXPECT_EQ(RunUntilTwoTitles({RECORDING_TOOL, station_.Url("/station.m3u")}, "", SIGINT), 0);
  ExpectTwoTitles();
}

TEST_F(Program, RecordsInAWindowUntilItIsClosed) {
  EXPECT_EQ(RunUntilTwoTitles({RECORDING_TOOL, station_.Url()}, "offscreen", SIGTERM), 0);
  ExpectTwoTitles();
}

TEST_F(Program, AsksForAnAddressOnATerminal) {
  EXPECT_EQ(test_support::RunProgram({RECORDING_TOOL}, Surroundings("")).exit_code, 2);
  EXPECT_EQ(test_support::RunProgram({RECORDING_TOOL, " "}, Surroundings("")).exit_code, 2);
}

TEST_F(Program, SaysWhenItCannotWrite) {
  const auto file = music_.Write("neu", "a file where the folder belongs");
  const auto result = test_support::RunProgram({RECORDING_TOOL, station_.Url()}, Surroundings(""));
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.output, testing::HasSubstr("In den Ordner kann nicht geschrieben werden"));
}

}  // namespace
}  // namespace recorder
