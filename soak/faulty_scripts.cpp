#include "soak/faulty_scripts.h"

#include <array>
#include <chrono>

namespace soak {
namespace {

using std::chrono::milliseconds;
using test_support::Header;
using test_support::Script;

using Maker = Script (*)(const Surroundings&, std::mt19937&);

std::size_t Below(std::mt19937& random, std::size_t limit) {
  return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
}

const std::string& AnyAddress(const Surroundings& around, std::mt19937& random) {
  return around.addresses[Below(random, around.addresses.size())];
}

std::string StreamHeader(const std::string& metaint) {
  return Header("ICY 200 OK", {"icy-name: Fehlerfunk", "icy-br: 128", "content-type: audio/mpeg",
                               "icy-metaint: " + metaint});
}

/// Music with a title in every block.
std::string Music(const Surroundings& around, std::size_t blocks) {
  constexpr std::size_t kBlock = 8000;
  std::string bytes;
  for (std::size_t block = 0; block < blocks; ++block) {
    const std::size_t start = block * kBlock % (around.music.size() - kBlock);
    bytes += around.music.substr(start, kBlock);
    bytes += test_support::TitleBlock("Titel " + std::to_string(block));
  }
  return bytes;
}

Script PlaysForAWhile(const Surroundings& around, std::mt19937& random) {
  return Script()
      .Send(StreamHeader("8000") + Music(around, 4))
      .SendInPieces(Music(around, 4 + Below(random, 40)), 4000, milliseconds(200));
}
Script PlaysAndIsCut(const Surroundings& around, std::mt19937& random) {
  return Script().Send(StreamHeader("8000") + Music(around, 1 + Below(random, 20))).Reset();
}
Script PlaysAndStalls(const Surroundings& around, std::mt19937& random) {
  return Script().Send(StreamHeader("8000") + Music(around, 1 + Below(random, 8))).Hold();
}
Script Trickles(const Surroundings& around, std::mt19937&) {
  return Script().Send(StreamHeader("8000")).SendInPieces(Music(around, 2), 100, milliseconds(50));
}
Script HeaderTrickles(const Surroundings&, std::mt19937&) {
  return Script().SendInPieces(StreamHeader("16000"), 1, milliseconds(100));
}
Script NeverAnswers(const Surroundings&, std::mt19937&) { return Script().Hold(); }
Script AnswersLate(const Surroundings& around, std::mt19937& random) {
  return Script()
      .Stall(milliseconds(500 + Below(random, 4000)))
      .Send(StreamHeader("8000") + Music(around, 8));
}
Script Redirects(const Surroundings& around, std::mt19937& random) {
  return test_support::Redirect("302 Found", AnyAddress(around, random));
}
Script RedirectsToMusic(const Surroundings& around, std::mt19937&) {
  return test_support::Redirect("301 Moved Permanently", around.good);
}
Script RedirectsNowhere(const Surroundings& around, std::mt19937& random) {
  const std::array<std::string, 5> places = {around.dead, "http://", "ftp://127.0.0.1/", "//", "\x01\x02"};
  return test_support::Redirect("302 Found", places[Below(random, places.size())]);
}
Script Refuses(const Surroundings&, std::mt19937& random) {
  constexpr std::array kStates = {"404 Not Found",    "500 Internal Server Error", "503 Service Unavailable",
                                  "401 Unauthorized", "301 Moved Permanently",     "999 ?"};
  return Script().Send(Header("HTTP/1.0 " + std::string(kStates[Below(random, kStates.size())]))).Close();
}
Script TalksNonsense(const Surroundings&, std::mt19937& random) {
  std::string bytes(1 + Below(random, 60'000), '\0');
  for (char& byte : bytes) byte = static_cast<char>(Below(random, 256));
  return Script().Send(bytes).Close();
}
Script EndlessHeader(const Surroundings&, std::mt19937&) {
  return Script().Send("HTTP/1.0 200 OK\r\n").Flood("X-Long: " + std::string(500, 'x') + "\r\n");
}
Script PageForMusic(const Surroundings&, std::mt19937&) {
  return test_support::Page("audio/mpeg", "<html><body>Wartungsarbeiten</body></html>");
}
Script WrongInterval(const Surroundings& around, std::mt19937& random) {
  constexpr std::array kIntervals = {"0", "-1", "1", "99999999999999999999", "viel"};
  return Script()
      .Send(StreamHeader(kIntervals[Below(random, kIntervals.size())]) + Music(around, 2))
      .Stall(milliseconds(300))
      .Close();
}
Script WrongLength(const Surroundings& around, std::mt19937& random) {
  const std::string length = Below(random, 2) == 0 ? "10" : "100000000";
  return Script()
      .Send(Header("HTTP/1.1 200 OK", {"Content-Type: audio/mpeg", "Content-Length: " + length}))
      .Send(Music(around, 3))
      .Close();
}
Script BrokenChunks(const Surroundings& around, std::mt19937&) {
  return Script()
      .Send(Header("HTTP/1.1 200 OK", {"Content-Type: audio/mpeg", "Transfer-Encoding: chunked"}))
      .Send(test_support::Chunk(Music(around, 1)) + "zz\r\nkaputt")
      .Close();
}
Script PlaylistInCircles(const Surroundings& around, std::mt19937& random) {
  return test_support::Page(
      "audio/x-scpls", "[playlist]\r\nNumberOfEntries=1\r\nFile1=" + AnyAddress(around, random) + "\r\n");
}
Script PlaylistOfMusic(const Surroundings& around, std::mt19937&) {
  return test_support::Page("audio/x-mpegurl", "#EXTM3U\n#EXTINF:-1,Gut\n" + around.good + "\n");
}
Script LongPlaylist(const Surroundings& around, std::mt19937&) {
  std::string list = "#EXTM3U\r\n";
  for (int entry = 0; entry < 5000; ++entry) list += "#EXTINF:-1,Eintrag\r\n" + around.dead + "\r\n";
  return test_support::Page("audio/x-mpegurl", list);
}
Script EndlessPlaylist(const Surroundings&, std::mt19937&) {
  return Script()
      .Send(Header("HTTP/1.0 200 OK", {"Content-Type: audio/x-mpegurl"}))
      .Flood("#EXTM3U\nhttp://a/\n");
}
Script SoundWithoutEnd(const Surroundings& around, std::mt19937&) {
  return Script().Send(StreamHeader("8000")).Flood(Music(around, 2));
}
Script EmptyAnswer(const Surroundings&, std::mt19937&) { return Script().Close(); }

constexpr std::array<Maker, 25> kMakers = {
    PlaysForAWhile,    PlaysForAWhile,   PlaysForAWhile,   PlaysAndIsCut,   PlaysAndStalls,
    Trickles,          HeaderTrickles,   NeverAnswers,     AnswersLate,     Redirects,
    RedirectsToMusic,  RedirectsToMusic, RedirectsNowhere, Refuses,         TalksNonsense,
    EndlessHeader,     PageForMusic,     WrongInterval,    WrongLength,     BrokenChunks,
    PlaylistInCircles, PlaylistOfMusic,  LongPlaylist,     EndlessPlaylist, SoundWithoutEnd};

}  // namespace

Script FaultyScript(const Surroundings& around, std::mt19937& random) {
  const std::size_t kind = Below(random, kMakers.size() + 1);
  return kind == kMakers.size() ? EmptyAnswer(around, random) : kMakers[kind](around, random);
}

}  // namespace soak
