#include "tests/support/icy_station.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/mp3_loop.h"
#include "tests/support_tests/raw_client.h"

namespace test_support {
namespace {

using namespace std::chrono_literals;

/// Frame number `n` of MPEG-1 layer III, 128 kbit/s, 48 kHz: 384 bytes, 24 ms, filled with its number.
std::string MakeFrame(int n) { return "\xFF\xFB\x94\x04" + std::string(380, static_cast<char>('A' + n)); }

std::string MakeFile(int frames) {
  std::string file;
  for (int n = 0; n < frames; ++n) file += MakeFrame(n);
  return file;
}

/// Splits what a listener received into its audio and the texts of its metadata blocks.
struct Listened {
  Listened(const std::string& bytes, std::size_t metaint) {
    std::size_t position = 0;
    while (position < bytes.size()) {
      audio += bytes.substr(position, metaint);
      position += metaint;
      if (position >= bytes.size()) break;
      const std::size_t size = std::size_t{16} * static_cast<unsigned char>(bytes[position]);
      if (position + 1 + size > bytes.size()) break;
      if (size > 0)
        titles.push_back(bytes.substr(position + 1, bytes.find('\0', position + 1) - position - 1));
      ++blocks;
      position += 1 + size;
    }
  }
  std::string audio;
  std::vector<std::string> titles;
  int blocks = 0;
};

IcyStation::Settings Quick() {
  IcyStation::Settings settings;
  settings.metaint = 1000;
  settings.burst = 3s;
  return settings;
}

bool IsRoundAndRound(const std::string& audio, int frames) {
  const std::string file = MakeFile(frames);
  const auto start = audio.substr(0, 384);
  for (int first = 0; first < frames; ++first) {
    if (start != MakeFrame(first)) continue;
    for (std::size_t n = 0; n < audio.size(); ++n) {
      if (audio[n] != file[(n + static_cast<std::size_t>(first) * 384) % file.size()]) return false;
    }
    return true;
  }
  return false;
}

TEST(Mp3Loop, TakesWholeFramesOnly) {
  const Mp3Loop loop(MakeFile(3) + MakeFrame(3).substr(0, 100));
  ASSERT_EQ(loop.Count(), 3U);
  EXPECT_EQ(loop.Frame(0), MakeFrame(0));
  EXPECT_EQ(loop.Frame(5), MakeFrame(2));
  EXPECT_EQ(loop.FrameDuration(), 24ms);
  EXPECT_EQ(loop.BitRate(), 128);
}

TEST(Mp3Loop, LeavesTagsAndTheTableOfAnEncoderOut) {
  const std::string id3 = "ID3\3" + std::string(40, '\0') + "\xFF\xFB\x94\x04 no frame";
  std::string table = MakeFrame(0);
  table.replace(36, 4, "Xing");
  const Mp3Loop loop(id3 + table + MakeFile(2) + "TAG" + std::string(125, 'x'));
  ASSERT_EQ(loop.Count(), 2U);
  EXPECT_EQ(loop.Frame(0), MakeFrame(0));
}

TEST(Mp3Loop, KnowsTheFramesOfLowerSamplingRates) {
  // MPEG-2 layer III, 64 kbit/s, 22050 Hz, padded: 72 * 64000 / 22050 + 1 = 209 bytes, 576 samples.
  const Mp3Loop loop("\xFF\xF3\x82\x04" + std::string(205, 'x'));
  ASSERT_EQ(loop.Count(), 1U);
  EXPECT_EQ(loop.Frame(0).size(), 209U);
  EXPECT_EQ(loop.FrameDuration().count(), 576LL * 1'000'000'000 / 22050);
}

TEST(Mp3Loop, RefusesWhatContainsNoFrame) {
  EXPECT_THROW(Mp3Loop(""), std::invalid_argument);
  EXPECT_THROW(Mp3Loop(std::string(5000, '\xFF')), std::invalid_argument);
  EXPECT_THROW(Mp3Loop("<html>no music</html>"), std::invalid_argument);
}

TEST(IcyStation, SendsItsHeadersAndTitlesToThoseWhoAskForThem) {
  IcyStation::Settings settings = Quick();
  settings.name = "Radio Test";
  settings.genre = "Rock";
  settings.titles = {"Künstler - Lied"};
  IcyStation station(Mp3Loop(MakeFile(5)), settings);
  station.Start();
  RawClient client(station.Port());
  const std::string head = client.Ask("/stream", "icy-metadata: 1\r\n").ReadHead();
  EXPECT_EQ(head.substr(0, 17), "HTTP/1.0 200 OK\r\n");
  for (const char* line :
       {"\r\nContent-Type: audio/mpeg\r\n", "\r\nicy-name:Radio Test\r\n", "\r\nicy-genre:Rock\r\n",
        "\r\nicy-url:http://127.0.0.1/\r\n", "\r\nicy-br:128\r\n", "\r\nicy-metaint:1000\r\n"}) {
    EXPECT_NE(head.find(line), std::string::npos) << line;
  }
  const Listened listened(client.Read(20'000), 1000);
  EXPECT_EQ(listened.titles, std::vector<std::string>{"StreamTitle='Künstler - Lied';"});
  EXPECT_EQ(listened.blocks, 19);
  EXPECT_TRUE(IsRoundAndRound(listened.audio, 5));
}

TEST(IcyStation, SendsPlainAudioToOthers) {
  IcyStation station(Mp3Loop(MakeFile(5)), Quick());
  station.Start();
  RawClient client(station.Port());
  EXPECT_EQ(client.Ask("/stream").ReadHead().find("icy-metaint"), std::string::npos);
  EXPECT_TRUE(IsRoundAndRound(client.Read(20'000), 5));
  EXPECT_EQ(station.Count().titles, 0);
}

TEST(IcyStation, SendsTheBurstAtOnce) {
  IcyStation::Settings settings = Quick();
  settings.burst = 30s;
  IcyStation station(Mp3Loop(MakeFile(5)), settings);
  station.Start();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(RawClient(station.Port()).Ask("/stream").Read(1250 * 384).size(), 1250U * 384U);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 15s);
}

TEST(IcyStation, KeepsThePaceOfTheMusicAfterTheBurst) {
  IcyStation::Settings settings = Quick();
  settings.burst = 480ms;
  IcyStation station(Mp3Loop(MakeFile(5)), settings);
  station.Start();
  const auto start = std::chrono::steady_clock::now();
  RawClient client(station.Port());
  client.Ask("/stream").ReadHead();
  EXPECT_EQ(client.Read(40 * 384).size(), 40U * 384U);
  // The fortieth frame begins 936 ms after the first, and 480 ms of that are burst.
  EXPECT_GE(std::chrono::steady_clock::now() - start, 456ms);
}

TEST(IcyStation, ChangesTheTitleWithTime) {
  IcyStation::Settings settings = Quick();
  settings.titles = {"one", "two", "three"};
  settings.title_time = 100ms;
  settings.burst = 0ms;
  settings.metaint = 100;
  IcyStation station(Mp3Loop(MakeFile(5)), settings);
  station.Start();
  RawClient client(station.Port());
  client.Ask("/stream", "Icy-MetaData:1\r\n").ReadHead();
  ASSERT_TRUE(station.WaitUntil([](const auto& counts) { return counts.titles >= 4; }, kDeadline));
  const Listened listened(client.Read(5000), 100);
  ASSERT_GE(listened.titles.size(), 3U);
  const std::vector<std::string> round = {"StreamTitle='one';", "StreamTitle='two';", "StreamTitle='three';"};
  for (std::size_t n = 0; n + 1 < listened.titles.size(); ++n) {
    const auto at = static_cast<std::size_t>(std::ranges::find(round, listened.titles[n]) - round.begin());
    ASSERT_LT(at, 3U) << listened.titles[n];
    EXPECT_NE(listened.titles[n + 1], listened.titles[n]);
  }
}

TEST(IcyStation, OffersPlaylistsThatNameTheStream) {
  IcyStation station(Mp3Loop(MakeFile(5)), Quick());
  station.Start();
  const std::string pls = RawClient(station.Port()).Ask("/station.pls").ReadToEnd();
  EXPECT_NE(pls.find("\r\n\r\n[playlist]\r\nNumberOfEntries=1\r\nFile1=" + station.Url() + "\r\n"),
            std::string::npos);
  const std::string m3u = RawClient(station.Port()).Ask("/station.m3u?x=1").ReadToEnd();
  EXPECT_NE(m3u.find("\r\n\r\n#EXTM3U\r\n#EXTINF:-1,Test\r\n" + station.Url() + "\r\n"), std::string::npos);
  EXPECT_EQ(RawClient(station.Port()).Ask("/gone").ReadToEnd().substr(0, 22), "HTTP/1.0 404 Not Found");
}

TEST(IcyStation, CountsItsListenersAndNoticesThatTheyLeave) {
  std::vector<std::string> lines;
  IcyStation::Settings settings = Quick();
  settings.log = [&lines](const std::string& line) { lines.push_back(line); };
  IcyStation station(Mp3Loop(MakeFile(5)), settings);
  station.Start();
  RawClient first(station.Port());
  RawClient second(station.Port());
  first.Ask("/stream", "Icy-MetaData:1\r\n").Read(3000);
  second.Ask("/stream").Read(3000);
  EXPECT_EQ(station.Count().listeners, 2);
  first.Close();
  ASSERT_TRUE(station.WaitUntil([](const auto& counts) { return counts.listeners == 1; }, kDeadline));
  EXPECT_EQ(station.Count().all_listeners, 2);
  EXPECT_EQ(station.Count().requests, 2);
  station.Stop();
  EXPECT_EQ(lines[0], "request GET /stream HTTP/1.0");
  EXPECT_EQ(lines[1], "title Artist - Song");
}

TEST(IcyStation, RefusesClientsWhileItIsOffTheAirAndComesBackOnItsPort) {
  IcyStation station(Mp3Loop(MakeFile(5)), Quick());
  EXPECT_THROW(RawClient(station.Port()), std::runtime_error);
  station.Start();
  RawClient client(station.Port());
  client.Ask("/stream").Read(1000);
  station.Stop();
  client.ReadToEnd();
  EXPECT_EQ(station.Count().listeners, 0);
  EXPECT_THROW(RawClient(station.Port()), std::runtime_error);
  station.Start();
  EXPECT_EQ(RawClient(station.Port()).Ask("/stream").Read(15), "HTTP/1.0 200 OK");
}

}  // namespace
}  // namespace test_support
