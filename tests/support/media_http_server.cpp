#include "tests/support/media_http_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "tests/support/child_process.h"

namespace test_support {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kSlice{10};
constexpr std::size_t kLongestRequest = 16384;

bool Waits(int descriptor, short events, milliseconds limit) {
  pollfd ready{descriptor, events, 0};
  return poll(&ready, 1, static_cast<int>(limit.count())) > 0;
}

/// True when the other side has closed; a GET has nothing more to say.
bool ClientGone(int socket) {
  if (!Waits(socket, POLLIN, milliseconds(0))) return false;
  char byte = 0;
  return recv(socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT) <= 0;
}

}  // namespace

bool MediaHttpServer::Connection::Send(const std::string& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size() && !stopping_) {
    if (!Waits(socket_, POLLOUT, kSlice)) continue;
    const ssize_t size = send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (size < 0) return false;
    sent += static_cast<std::size_t>(size);
  }
  return !stopping_;
}

bool MediaHttpServer::Connection::SendAtRate(const std::string& bytes, std::size_t bytes_per_second) {
  const auto start = Clock::now();
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    const auto due =
        std::min(bytes.size(), static_cast<std::size_t>(seconds * static_cast<double>(bytes_per_second)));
    if (due > sent && !Send(bytes.substr(sent, due - sent))) return false;
    sent = std::max(sent, due);
    if (stopping_ || ClientGone(socket_)) return false;
    std::this_thread::sleep_for(kSlice);
  }
  return true;
}

void MediaHttpServer::Connection::StaySilent(milliseconds limit) {
  const auto deadline = Clock::now() + limit;
  while (!stopping_ && Clock::now() < deadline && !ClientGone(socket_)) std::this_thread::sleep_for(kSlice);
}

void MediaHttpServer::Connection::ResetAtEnd() const {
  const linger at_once{1, 0};
  setsockopt(socket_, SOL_SOCKET, SO_LINGER, &at_once, sizeof(at_once));
}

MediaHttpServer::MediaHttpServer() : port_(FreePort()) { Listen(); }

MediaHttpServer::~MediaHttpServer() {
  stopping_ = true;
  Refuse();
  for (std::thread& thread : answering_) thread.join();
}

void MediaHttpServer::On(const std::string& path, Handler handler) {
  const std::lock_guard lock(mutex_);
  handlers_[path] = std::move(handler);
}

std::string MediaHttpServer::Url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

int MediaHttpServer::Requests(const std::string& path) const {
  const std::lock_guard lock(mutex_);
  const auto found = requests_.find(path);
  return found == requests_.end() ? 0 : found->second;
}

void MediaHttpServer::Listen() {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int yes = 1;
  setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port_));
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
      listen(listener_, 64) != 0) {
    throw std::runtime_error("the test's HTTP server cannot listen");
  }
  refusing_ = false;
  accepting_ = std::thread([this, listener = listener_] { Accept(listener); });
}

void MediaHttpServer::Refuse() {
  if (refusing_.exchange(true)) return;
  accepting_.join();
  close(std::exchange(listener_, -1));
}

void MediaHttpServer::Accept(int listener) {
  while (!refusing_) {
    if (!Waits(listener, POLLIN, kSlice)) continue;
    const int socket = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) continue;
    ++accepted_;
    const std::lock_guard lock(mutex_);
    answering_.emplace_back([this, socket] { Answer(socket); });
  }
}

void MediaHttpServer::Answer(int socket) {
  ++open_;
  std::string request;
  char byte = 0;
  while (!stopping_ && request.size() < kLongestRequest && request.find("\r\n\r\n") == std::string::npos) {
    if (!Waits(socket, POLLIN, kSlice)) continue;
    if (recv(socket, &byte, 1, 0) != 1) break;
    request += byte;
  }
  const auto start = request.find(' ') + 1;
  const std::string path = request.substr(start, request.find(' ', start) - start);
  Handler handler = [](Connection& connection) {
    connection.Send(HttpAnswer("404 Not Found", "text/html", "<html>nothing here</html>"));
  };
  if (!request.empty()) {
    const std::lock_guard lock(mutex_);
    ++requests_[path];
    if (const auto found = handlers_.find(path); found != handlers_.end()) handler = found->second;
  }
  Connection connection(socket, request, stopping_);
  if (!request.empty()) handler(connection);
  close(socket);
  --open_;
}

std::string HttpAnswer(const std::string& status, const std::string& type, const std::string& body,
                       const std::string& more_headers) {
  return "HTTP/1.1 " + status + "\r\nContent-Type: " + type +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n" + more_headers +
         "\r\n" + body;
}

std::string LiveHead(const std::string& type) {
  return "HTTP/1.0 200 OK\r\nContent-Type: " + type + "\r\nicy-name: Testsender\r\n\r\n";
}

}  // namespace test_support
