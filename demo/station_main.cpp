// The radio station of the demonstration: plays an MP3 loop on 127.0.0.1 until it is asked to end.
//
//   demo_station LOOP.mp3 [PORT [NAME GENRE URL TITLE...]]
//
// The port 0 is any that is free.
// Prints "port N" first, then a line for every request, every title that a listener is sent and every
// listener that leaves. Ends on SIGTERM or SIGINT, and when its standard input ends, which is what happens to
// a pipe when the program that holds its other end is gone.

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include "tests/support/icy_station.h"
#include "tests/support/mp3_loop.h"

namespace {

std::optional<std::string> ReadFile(const char* path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

std::optional<std::uint16_t> ParsePort(std::string_view text) {
  std::uint16_t port = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return port;
}

/// Blocks the ending signals for this and every later thread, so that they arrive at the returned descriptor.
int OpenEndingSignals() {
  sigset_t ending;
  sigemptyset(&ending);
  sigaddset(&ending, SIGTERM);
  sigaddset(&ending, SIGINT);
  sigaddset(&ending, SIGHUP);
  pthread_sigmask(SIG_BLOCK, &ending, nullptr);
  return signalfd(-1, &ending, SFD_CLOEXEC);
}

void WaitForTheEnd(int signals) {
  std::array<pollfd, 2> entries{{{signals, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
  while (true) {
    if (poll(entries.data(), entries.size(), -1) < 0) continue;
    if (entries[0].revents != 0) return;
    if (entries[1].revents == 0) continue;
    std::array<char, 256> ignored;
    if (read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0) return;
  }
}

/// What the station is and sends, by the words after the port.
test_support::IcyStation::Settings Programme(std::span<const char* const> words) {
  test_support::IcyStation::Settings settings;
  settings.name = words.empty() ? "Radio Lichtung" : words[0];
  settings.genre = words.size() < 2 ? "Pop & Hits" : words[1];
  if (words.size() > 2) settings.url = words[2];
  if (words.size() > 3) settings.titles.assign(words.begin() + 3, words.end());
  settings.title_time = std::chrono::seconds(15);
  settings.log = [](const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
  };
  return settings;
}

int Run(const char* file, std::uint16_t port, std::span<const char* const> programme) {
  const int signals = OpenEndingSignals();
  const auto music = ReadFile(file);
  if (!music) {
    std::fprintf(stderr, "demo_station: cannot read %s\n", file);
    return 1;
  }
  test_support::IcyStation station(test_support::Mp3Loop(*music), Programme(programme), port);
  station.Start();
  std::printf("port %d\n", station.Port());
  std::fflush(stdout);
  WaitForTheEnd(signals);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const auto words = std::span<const char* const>(argv, static_cast<std::size_t>(argc));
  const auto port = words.size() >= 3 ? ParsePort(words[2]) : std::uint16_t{0};
  if (words.size() < 2 || !port) {
    std::fprintf(stderr, "usage: demo_station LOOP.mp3 [PORT [NAME GENRE URL TITLE...]]\n");
    return 2;
  }
  // The reader of the lines may leave before the station does.
  signal(SIGPIPE, SIG_IGN);
  try {
    return Run(words[1], *port, words.subspan(std::min<std::size_t>(words.size(), 3)));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "demo_station: %s\n", error.what());
    return 1;
  }
}
