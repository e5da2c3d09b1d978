#include "tests/support/remote/remote_servers.h"

#include <winsock2.h>

#include <cstdlib>
#include <stdexcept>

namespace test_support {
namespace {

/// The connection to the process with the servers.
class Host {
 public:
  static Host& Get() {
    static Host host;
    return host;
  }

  Message Ask(const Message& request) {
    const std::string bytes = Packed(request);
    for (std::size_t sent = 0; sent < bytes.size();) {
      const int count = ::send(socket_, bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
      if (count <= 0) throw std::runtime_error("the process with the servers is gone");
      sent += static_cast<std::size_t>(count);
    }
    auto answer = ReadMessage(received_, [this](std::string& received) {
      char piece[65536];
      const int count = ::recv(socket_, piece, sizeof piece, 0);
      if (count > 0) received.append(piece, static_cast<std::size_t>(count));
      return count > 0;
    });
    if (!answer || answer->empty()) throw std::runtime_error("the process with the servers is gone");
    if (answer->front() != "ok") throw std::runtime_error(answer->back());
    answer->erase(answer->begin());
    return *answer;
  }

 private:
  Host() {
    const char* const port = std::getenv("FUNKHAUS_SERVERS");
    if (port == nullptr) throw std::runtime_error("this test is run by server_host");
    WSADATA data;
    if (::WSAStartup(MAKEWORD(2, 2), &data) != 0) throw std::runtime_error("no sockets");
    socket_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    address.sin_port = ::htons(static_cast<u_short>(std::atoi(port)));
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
      throw std::runtime_error("the process with the servers does not answer");
  }

  SOCKET socket_;
  std::string received_;
};

Message WithNumber(const std::string& name, const std::string& number, const Message& arguments) {
  Message request{name, number};
  request.insert(request.end(), arguments.begin(), arguments.end());
  return request;
}

}  // namespace

RemoteServer::RemoteServer(const Message& request) : made_(Host::Get().Ask(request)) {
  number_ = made_.at(0);
  made_.erase(made_.begin());
}

RemoteServer::~RemoteServer() {
  try {
    Host::Get().Ask({"end", number_});
  } catch (const std::runtime_error&) {
    // Then it has ended already.
  }
}

Message RemoteServer::Ask(const std::string& name, const Message& arguments) const {
  return Host::Get().Ask(WithNumber(name, number_, arguments));
}

RemoteIcyServer::RemoteIcyServer()
    : RemoteServer({"new icy"}), port_(static_cast<std::uint16_t>(std::stoi(Ask("port").at(0)))) {}

void RemoteIcyServer::On(const std::string& target, const Script& script) {
  Message arguments{target, "1"};
  AppendScript(arguments, script);
  static_cast<void>(Ask("on", arguments));
}

void RemoteIcyServer::OnAny(const Script& script) {
  Message arguments;
  AppendScript(arguments, script);
  static_cast<void>(Ask("any", arguments));
}

void RemoteIcyServer::SetWelcome(Welcome welcome) {
  static_cast<void>(Ask("welcome", {std::to_string(static_cast<int>(welcome))}));
}

std::string RemoteIcyServer::Url(std::string_view target) const {
  return "http://127.0.0.1:" + std::to_string(port_) + std::string(target);
}

std::vector<RemoteIcyServer::Request> RemoteIcyServer::Requests() const {
  const Message fields = Ask("requests");
  std::vector<Request> requests;
  for (std::size_t at = 0; at + 2 < fields.size(); at += 3)
    requests.push_back({fields[at], fields[at + 1], fields[at + 2]});
  return requests;
}

int RemoteIcyServer::Connections() const { return std::stoi(Ask("connections").at(0)); }

int RemoteIcyServer::OpenConnections() const { return std::stoi(Ask("open connections").at(0)); }

std::uint64_t RemoteIcyServer::BytesSent() const { return std::stoull(Ask("bytes sent").at(0)); }

void RemoteIcyServer::Signal(const std::string& name) { static_cast<void>(Ask("signal", {name})); }

bool RemoteIcyServer::WaitForRequests(std::size_t count, milliseconds deadline) const {
  return !Ask("wait requests", {std::to_string(deadline.count()), std::to_string(count)}).at(0).empty();
}

bool RemoteIcyServer::WaitForConnections(int count, milliseconds deadline) const {
  return !Ask("wait connections", {std::to_string(deadline.count()), std::to_string(count)}).at(0).empty();
}

bool RemoteIcyServer::WaitForAllClosed(milliseconds deadline) const {
  return !Ask("wait closed", {std::to_string(deadline.count())}).at(0).empty();
}

std::string RemoteIcecastServer::FeedTone(const std::string& mount) {
  return Ask("icecast feed", {mount}).at(0);
}

void RemoteIcecastServer::SetTitle(const std::string& mount, const std::string& title) {
  static_cast<void>(Ask("icecast title", {mount, title}));
}

RemoteTlsFront::RemoteTlsFront(std::uint16_t plain_port, Certificate certificate)
    : RemoteServer({"new tls", std::to_string(plain_port), std::to_string(static_cast<int>(certificate))}) {}

std::string RemoteTlsFront::Url(std::string_view target) const { return Made().at(0) + std::string(target); }

}  // namespace test_support
