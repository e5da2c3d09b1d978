// The soak's radio servers: a good station and some faulty servers on 127.0.0.1.
//
// soak_servers LOOP.mp3 SEED prints "good ADDRESS", a line "target ADDRESS" for each target of the faulty
// servers, and "ready". Then it obeys the lines of its standard input, each answered by "done": "shuffle"
// gives some targets other answers, "down" and "up" end and bring back one of the servers, "quiet" and "loud"
// the good station. It ends with its input.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "soak/faulty_scripts.h"
#include "tests/support/icy_station.h"
#include "tests/support/mp3_loop.h"
#include "tests/support/scripted_icy_server.h"

namespace soak {
namespace {

using test_support::ScriptedIcyServer;

constexpr int kServers = 5;
constexpr int kTargets = 6;  // of each server

/// A server that can go and come back under the same port.
struct Faulty {
  std::uint16_t port = 0;
  std::unique_ptr<ScriptedIcyServer> server;
};

class Servers {
 public:
  Servers(const std::string& music, unsigned seed)
      : random_(seed), station_(test_support::Mp3Loop(music), {}) {
    station_.Start();
    around_.music = music;
    around_.good = station_.Url();
    around_.dead = "http://127.0.0.1:9/";
    for (Faulty& faulty : faulty_) {
      faulty.server = std::make_unique<ScriptedIcyServer>();
      faulty.port = faulty.server->Port();
      for (int target = 0; target < kTargets; ++target) {
        around_.addresses.push_back(faulty.server->Url(Target(target)));
      }
    }
    for (Faulty& faulty : faulty_) GiveAnswers(faulty);
  }

  [[nodiscard]] const Surroundings& Around() const { return around_; }

  void Obey(const std::string& order) {
    Faulty& any = faulty_[random_() % faulty_.size()];
    if (order == "shuffle" && any.server) GiveAnswers(any);
    if (order == "down") any.server.reset();
    if (order == "up") BringBack();
    if (order == "quiet") station_.Stop();
    if (order == "loud") station_.Start();
  }

 private:
  static std::string Target(int number) {
    // Two look like playlists by their names.
    const std::string name = "/sender" + std::to_string(number);
    if (number == 0) return name + ".pls";
    return number == 1 ? name + ".m3u" : name;
  }
  void GiveAnswers(Faulty& faulty) {
    for (int target = 0; target < kTargets; ++target) {
      faulty.server->On(Target(target), FaultyScript(around_, random_));
    }
  }
  void BringBack() {
    for (Faulty& faulty : faulty_) {
      if (faulty.server) continue;
      try {
        faulty.server = std::make_unique<ScriptedIcyServer>(faulty.port);
        GiveAnswers(faulty);
      } catch (const std::runtime_error&) {
        continue;  // The port is still taken; the next "up" tries again.
      }
    }
  }

  std::mt19937 random_;
  test_support::IcyStation station_;
  Surroundings around_;
  std::vector<Faulty> faulty_{kServers};
};

std::string ReadFile(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Say(const std::string& line) { std::cout << line << std::endl; }

int Run(const char* file, unsigned seed) {
  Servers servers(ReadFile(file), seed);
  Say("good " + servers.Around().good);
  for (const std::string& address : servers.Around().addresses) Say("target " + address);
  Say("ready");
  for (std::string order; std::getline(std::cin, order);) {
    servers.Obey(order);
    Say("done");
  }
  return 0;
}

}  // namespace
}  // namespace soak

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: soak_servers LOOP.mp3 SEED\n");
    return 2;
  }
  signal(SIGPIPE, SIG_IGN);
  try {
    return soak::Run(argv[1], static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "soak_servers: %s\n", error.what());
    return 1;
  }
}
