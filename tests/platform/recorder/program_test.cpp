// The recording tool as the player's button starts it: a process of its own.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include "tests/platform/recorder/tool_fixture.h"
#include "tests/support/icy_script.h"
#include "tests/support/scripted_icy_server.h"

namespace recorder {
namespace {

class Program : public Tool {
 protected:
  // Runs the program until two titles are recorded, asks it to end, and gives its exit code.
  int RunUntilTwoTitles(const ChildProcess::Arguments& arguments, const char* qt_platform, int signal) {
    return RunUntilTwoTitles(arguments, Surroundings(qt_platform), signal);
  }
  int RunUntilTwoTitles(const ChildProcess::Arguments& arguments,
                        const ChildProcess::Environment& surroundings, int signal) {
    ChildProcess program(arguments, surroundings);
    EXPECT_TRUE(WaitUntil([&] { return TwoTitlesAreRecorded(); }, kDeadline));
    program.Signal(signal);
    return program.WaitForExit();
  }
  // Whether the process handles the signal by now; the kernel shows that as a mask in hexadecimal digits.
  static bool Catches(pid_t process, int signal) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    std::string word;
    while (status >> word && word != "SigCgt:") {
    }
    unsigned long long mask = 0;
    status >> std::hex >> mask;
    return (mask >> (signal - 1) & 1) != 0;
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

TEST_F(Program, RecordsInAWindowUntilCtrlC) {
  EXPECT_EQ(RunUntilTwoTitles({RECORDING_TOOL, station_.Url()}, "offscreen", SIGINT), 0);
  ExpectTwoTitles();
}

TEST_F(Program, RecordsUntilItsTerminalIsClosed) {
  EXPECT_EQ(RunUntilTwoTitles({RECORDING_TOOL, station_.Url()}, "", SIGHUP), 0);
  ExpectTwoTitles();
}

TEST_F(Program, RecordsOnATerminalWhenTheDisplayCannotBeReached) {
  auto surroundings = Surroundings("");
  surroundings["DISPLAY"] = ":nonexistent";
  EXPECT_EQ(RunUntilTwoTitles({RECORDING_TOOL, station_.Url()}, surroundings, SIGTERM), 0);
  ExpectTwoTitles();
}

TEST_F(Program, RecordsOnATerminalOfADesktopWhenAskedTo) {
  const auto output = music_.Path() / "output";
  const ChildProcess::Arguments arguments = {
      "sh", "-c", "exec \"$1\" --terminal \"$2\" >\"$3\"", "sh", RECORDING_TOOL, station_.Url(), output};
  EXPECT_EQ(RunUntilTwoTitles(arguments, "offscreen", SIGTERM), 0);
  ExpectTwoTitles();
  EXPECT_THAT(test_support::ReadBytes(output), testing::HasSubstr("Aufnahme läuft: Testfunk"));
}

TEST_F(Program, EndsWithTheReasonWhenThereIsNothingToRecord) {
  test_support::ScriptedIcyServer server;
  server.OnAny(test_support::Script().Send(test_support::Header("HTTP/1.1 404 Not Found", {})));
  const auto refused = test_support::RunProgram({RECORDING_TOOL, server.Url()}, Surroundings(""));
  EXPECT_EQ(refused.exit_code, 1);
  EXPECT_THAT(refused.output, testing::HasSubstr("Unter dieser Adresse gibt es keinen Sender (404)"));
  const auto no_address = test_support::RunProgram({RECORDING_TOOL, "mms://127.0.0.1/"}, Surroundings(""));
  EXPECT_EQ(no_address.exit_code, 1);
  EXPECT_THAT(no_address.output,
              testing::HasSubstr("Nur Adressen mit http:// oder https:// lassen sich aufnehmen"));
}

TEST_F(Program, AsksForAnAddressInAWindowUntilItIsClosed) {
  ChildProcess program({RECORDING_TOOL}, Surroundings("offscreen"));
  EXPECT_TRUE(WaitUntil([&] { return Catches(program.Pid(), SIGTERM); }, kDeadline));
  program.Signal(SIGTERM);
  EXPECT_EQ(program.WaitForExit(), 0);
}

TEST_F(Program, AsksForAnAddressOnATerminal) {
  const auto answer = music_.Write("answer", " " + station_.Url() + "\r\n");
  const ChildProcess::Arguments arguments = {"sh", "-c", "exec \"$1\" <\"$2\"", "sh", RECORDING_TOOL, answer};
  EXPECT_EQ(RunUntilTwoTitles(arguments, "", SIGTERM), 0);
  ExpectTwoTitles();
}

TEST_F(Program, EndsWithItsUsageWhenNoAddressIsEntered) {
  for (const ChildProcess::Arguments& arguments :
       {ChildProcess::Arguments{RECORDING_TOOL}, {RECORDING_TOOL, " "}}) {
    const auto result = test_support::RunProgram(arguments, Surroundings(""));
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.output, "Adresse eines Senders oder einer Playlist: ");
  }
}

TEST_F(Program, ExplainsItselfOnRequest) {
  for (const char* qt_platform : {"", "offscreen"}) {
    const auto help = test_support::RunProgram({RECORDING_TOOL, "--help"}, Surroundings(qt_platform));
    EXPECT_EQ(help.exit_code, 0);
    EXPECT_THAT(help.output, testing::StartsWith("Aufruf: OZRecordFunkhaus [--terminal] [ADRESSE]"));
    EXPECT_EQ(test_support::RunProgram({RECORDING_TOOL, "--nonsense"}, Surroundings(qt_platform)).exit_code,
              2);
  }
}

TEST_F(Program, SaysThatAStationCannotBeReachedWhenTheInternetLibraryIsMissing) {
  auto surroundings = Surroundings("");
  surroundings["LD_LIBRARY_PATH"] = music_.Path();
  music_.Write("libcurl.so.4", "no library");
  const auto output = music_.Path() / "output";
  ChildProcess program(
      {"sh", "-c", "exec \"$1\" \"$2\" >\"$3\"", "sh", RECORDING_TOOL, station_.Url(), output}, surroundings);
  const auto says = [&] {
    return music_.Read("output").find("Der Sender ist nicht erreichbar") != std::string::npos;
  };
  EXPECT_TRUE(WaitUntil(says, kDeadline));
  program.Signal(SIGTERM);
  EXPECT_EQ(program.WaitForExit(), 0);
  EXPECT_THAT(Files(), testing::IsEmpty());
}

TEST_F(Program, SaysWhenItCannotWrite) {
  const auto file = music_.Write("neu", "a file where the folder belongs");
  const auto result = test_support::RunProgram({RECORDING_TOOL, station_.Url()}, Surroundings(""));
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.output, testing::HasSubstr("In den Ordner kann nicht geschrieben werden"));
}

TEST_F(Program, SaysWhenTheDiskIsFullAndKeepsWhatWasRecorded) {
  // The shell counts in blocks of 512 bytes; a second of the tone takes more than forty of them.
  const auto result = test_support::RunProgram(
      {"sh", "-c", "ulimit -f 40; exec \"$1\" \"$2\"", "sh", RECORDING_TOOL, station_.Url()},
      Surroundings(""), kDeadline);
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.output,
              testing::HasSubstr("Der Datenträger nimmt nichts mehr auf, vermutlich ist er voll"));
  bool has_filled_one = false;
  for (const std::string& name : Files()) {
    if (SizeOf(name) > 2 * kInterval) ExpectToPlay(name);
    has_filled_one = has_filled_one || SizeOf(name) == 40 * 512;
  }
  EXPECT_TRUE(has_filled_one);
}

}  // namespace
}  // namespace recorder
