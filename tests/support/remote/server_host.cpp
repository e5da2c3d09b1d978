// Runs a program for another system beside servers of this one: server_host COMMAND [ARGUMENT...]
//
// The environment variable FUNKHAUS_SERVERS names the port of 127.0.0.1 on which the program asks for servers
// (tests/support/remote/remote_servers.h). They end with the connection that asked for them.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <list>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <utility>

#include "tests/support/icecast_server.h"
#include "tests/support/local_socket.h"
#include "tests/support/media_files.h"
#include "tests/support/remote/messages.h"
#include "tests/support/scripted_icy_server.h"
#include "tests/support/tls_front.h"

namespace {

using namespace test_support;
using std::chrono::milliseconds;

std::string Answered(bool value) { return value ? "1" : ""; }

/// The servers of one connection.
class Servers {
 public:
  Message Serve(const Message& request) {
    const std::string& name = request.at(0);
    if (name == "new icy") return Keep(icy_, std::make_unique<ScriptedIcyServer>());
    if (name == "new icecast") return Keep(icecast_, std::make_unique<IcecastServer>());
    if (name == "new tls") return NewTls(request);
    const int number = std::stoi(request.at(1));
    if (name == "end") {
      icy_.erase(number);
      icecast_.erase(number);
      tls_.erase(number);
      return {};
    }
    if (name.starts_with("icecast ")) return ServeIcecast(*icecast_.at(number), request);
    return ServeIcy(*icy_.at(number), request);
  }

 private:
  template <typename Server>
  Message Keep(std::map<int, std::unique_ptr<Server>>& servers, std::unique_ptr<Server> server) {
    servers[++last_] = std::move(server);
    return {std::to_string(last_)};
  }

  Message NewTls(const Message& request) {
    const auto port = static_cast<std::uint16_t>(std::stoi(request.at(1)));
    auto front =
        std::make_unique<TlsFront>(port, static_cast<TlsFront::Certificate>(std::stoi(request.at(2))));
    const std::string url = front->Url("");
    const std::string trusted = ReadBytes(front->CertificateFile());
    Message answer = Keep(tls_, std::move(front));
    answer.insert(answer.end(), {url, trusted});
    return answer;
  }

  Message ServeIcecast(IcecastServer& server, const Message& request) {
    if (request.at(0) == "icecast feed") {
      const std::string& mount = request.at(2);
      server.Feed(mount, MakeTone(music_, "tone.mp3", "libmp3lame"), "mp3", "audio/mpeg");
      return {server.Url(mount)};
    }
    server.SetTitle(request.at(2), request.at(3));
    return {};
  }

  static Message ServeIcy(ScriptedIcyServer& server, const Message& request) {
    const std::string& name = request.at(0);
    if (name == "on") {
      std::size_t at = 4;
      std::vector<Script> scripts;
      for (int left = std::stoi(request.at(3)); left > 0; --left) scripts.push_back(ReadScript(request, at));
      server.OnEach(request.at(2), std::move(scripts));
      return {};
    }
    if (name == "any") {
      std::size_t at = 2;
      server.OnAny(ReadScript(request, at));
      return {};
    }
    if (name == "welcome") {
      server.SetWelcome(static_cast<ScriptedIcyServer::Welcome>(std::stoi(request.at(2))));
      return {};
    }
    if (name == "signal") {
      server.Signal(request.at(2));
      return {};
    }
    if (name.starts_with("wait ")) return {Answered(Wait(server, request))};
    return Counted(server, name);
  }

  static bool Wait(ScriptedIcyServer& server, const Message& request) {
    const std::string& name = request.at(0);
    const milliseconds deadline(std::stol(request.at(2)));
    if (name == "wait closed") return server.WaitForAllClosed(deadline);
    if (name == "wait mark") return server.WaitForMark(request.at(3), deadline);
    const std::size_t count = std::stoul(request.at(3));
    if (name == "wait requests") return server.WaitForRequests(count, deadline);
    if (name == "wait bytes") return server.WaitForBytesSent(count, deadline);
    return server.WaitForConnections(static_cast<int>(count), deadline);
  }

  static Message Counted(ScriptedIcyServer& server, const std::string& name) {
    if (name == "port") return {std::to_string(server.Port())};
    if (name == "connections") return {std::to_string(server.Connections())};
    if (name == "open connections") return {std::to_string(server.OpenConnections())};
    if (name == "bytes sent") return {std::to_string(server.BytesSent())};
    Message requests;
    for (const auto& request : server.Requests())
      requests.insert(requests.end(), {request.line, request.target, request.headers});
    return requests;
  }

  TempFolder music_;
  int last_ = 0;
  std::map<int, std::unique_ptr<ScriptedIcyServer>> icy_;
  std::map<int, std::unique_ptr<IcecastServer>> icecast_;
  std::map<int, std::unique_ptr<TlsFront>> tls_;
};

void ServeConnection(const Descriptor& socket, const StopSignal& stop) {
  Servers servers;
  std::string received;
  const auto receive = [&](std::string& bytes) { return Receive(socket, bytes, stop); };
  while (const auto request = ReadMessage(received, receive)) {
    Message answer{"ok"};
    try {
      const Message served = servers.Serve(*request);
      answer.insert(answer.end(), served.begin(), served.end());
    } catch (const std::exception& error) {
      answer = {"failed", error.what()};
    }
    if (!SendAll(socket, Packed(answer), stop)) return;
  }
}

int RunCommand(char** words) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::execvp(words[0], words);
    std::perror(words[0]);
    ::_exit(127);
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child) return 1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace

int main(int count, char** words) {
  if (count < 2) {
    std::fputs("server_host COMMAND [ARGUMENT...]\n", stderr);
    return 2;
  }
  std::signal(SIGPIPE, SIG_IGN);
  const Descriptor listener = ListenLocally(0);
  ::setenv("FUNKHAUS_SERVERS", std::to_string(LocalPort(listener)).c_str(), 1);
  StopSignal stop;
  std::list<std::thread> serving;
  std::thread accepting([&] {
    while (true) {
      Descriptor socket = Accept(listener, stop);
      if (!socket.IsOpen()) return;
      serving.emplace_back([&stop, owned = std::move(socket)] { ServeConnection(owned, stop); });
    }
  });
  const int result = RunCommand(words + 1);
  stop.Raise();
  accepting.join();
  for (std::thread& thread : serving) thread.join();
  return result;
}
