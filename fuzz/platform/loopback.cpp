#include "fuzz/platform/loopback.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string_view>

namespace {

// The one port that may be asked, in network order.
in_port_t allowed_port = 0;

bool MayBeAsked(const sockaddr* address) {
  if (address->sa_family != AF_INET && address->sa_family != AF_INET6) return true;
  if (address->sa_family != AF_INET) return false;
  const auto* internet = reinterpret_cast<const sockaddr_in*>(address);
  return internet->sin_addr.s_addr == htonl(INADDR_LOOPBACK) && internet->sin_port == allowed_port;
}

}  // namespace

// The next two take the place of the system's for the libraries too: wherever an input redirects to, nobody
// else is asked, neither a server nor a name server.
extern "C" int connect(int socket, const sockaddr* address, socklen_t size) {
  if (MayBeAsked(address)) return static_cast<int>(syscall(SYS_connect, socket, address, size));
  errno = ECONNREFUSED;
  return -1;
}

extern "C" int getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** found) {
  using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
  static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
  addrinfo numeric = hints != nullptr ? *hints : addrinfo{};
  numeric.ai_flags |= AI_NUMERICHOST;
  return original(node, service, &numeric, found);
}

namespace fuzz {
namespace {

constexpr std::string_view kHeaderEnd = "\r\n\r\n";
/// What Finish sends: connections are accepted in their order.
constexpr std::string_view kMark = "MARK";
/// Far longer than anything takes; only so that a run cannot hang here.
constexpr int kPatience = 5000;

void Check(bool done) {
  if (!done) std::abort();
}

/// The fuzzer's own alarm interrupts whoever waits.
template <typename Call>
auto Retried(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

sockaddr_in AddressOf(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

/// Everything up to the end of the header; less when the peer goes.
std::string ReceiveHeader(int connection) {
  std::string header;
  while (header.find(kHeaderEnd) == std::string::npos && header != kMark) {
    char bytes[4096];
    const ssize_t count = Retried([&] { return recv(connection, bytes, sizeof(bytes), 0); });
    if (count <= 0) break;
    header.append(bytes, static_cast<std::size_t>(count));
  }
  return header;
}

/// False when the peer takes no more.
bool SendAll(int connection, std::string_view bytes, std::size_t& sent) {
  while (!bytes.empty()) {
    pollfd ready{connection, POLLOUT, 0};
    if (Retried([&] { return poll(&ready, 1, kPatience); }) != 1) return false;
    const ssize_t count = Retried([&] { return send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL); });
    if (count <= 0) return false;
    sent += static_cast<std::size_t>(count);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace

Loopback::Loopback() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = AddressOf(0);
  socklen_t size = sizeof(address);
  constexpr int kMostWaiting = 64;
  Check(bind(listener_, reinterpret_cast<const sockaddr*>(&address), size) == 0);
  Check(listen(listener_, kMostWaiting) == 0);
  Check(getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) == 0);
  allowed_port = address.sin_port;
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Run(); });
}

Loopback::~Loopback() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

void Loopback::Run() {
  while (true) {
    const int connection = Retried([&] { return accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC); });
    if (connection < 0) return;
    ServeOne(connection);
    close(connection);
  }
}

void Loopback::ServeOne(int connection) {
  std::string request = ReceiveHeader(connection);
  if (request == kMark) {
    std::size_t ignored = 0;
    SendAll(connection, kMark, ignored);
    return;
  }
  std::string answer;
  int repeated = 1;
  {
    const std::lock_guard lock(mutex_);
    const std::size_t turn = std::min(seen_.requests.size(), answers_.size() - 1);
    if (turn + 1 == answers_.size()) repeated = repeated_;
    answer = answers_[turn];
    seen_.requests.push_back(std::move(request));
  }
  std::size_t sent = 0;
  for (int round = 0; round < repeated && SendAll(connection, answer, sent); ++round) {
  }
  // What the peer still sends must not cut off what it has not read.
  shutdown(connection, SHUT_WR);
  ReceiveHeader(connection);
  const std::lock_guard lock(mutex_);
  seen_.sent += sent;
}

void Loopback::Answer(std::vector<std::string> answers, int repeated) {
  const std::lock_guard lock(mutex_);
  answers_ = std::move(answers);
  repeated_ = repeated;
  seen_ = {};
}

Loopback::Seen Loopback::Finish() {
  const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = AddressOf(port_);
  Check(connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0);
  std::size_t ignored = 0;
  Check(SendAll(connection, kMark, ignored) && ReceiveHeader(connection) == kMark);
  close(connection);
  const std::lock_guard lock(mutex_);
  return std::move(seen_);
}

}  // namespace fuzz
