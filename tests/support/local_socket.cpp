#include "tests/support/local_socket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace test_support {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

[[noreturn]] void Fail(const char* what) {
  throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

sockaddr_in LocalAddress(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

bool IsTransient(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

}  // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this == &other) return *this;
  Close();
  fd_ = other.Release();
  return *this;
}

void Descriptor::Close() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
}

int Descriptor::Release() { return std::exchange(fd_, -1); }

StopSignal::StopSignal() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!event_.IsOpen()) Fail("eventfd");
}

void StopSignal::Raise() {
  const std::uint64_t one = 1;
  if (::write(event_.Get(), &one, sizeof one) < 0 && !IsTransient(errno)) Fail("eventfd write");
}

bool StopSignal::IsRaised() const {
  pollfd entry{event_.Get(), POLLIN, 0};
  return ::poll(&entry, 1, 0) == 1;
}

Wake WaitFor(int fd, short events, const StopSignal& stop, std::optional<milliseconds> timeout) {
  const auto end = steady_clock::now() + timeout.value_or(milliseconds(0));
  while (true) {
    int wait = -1;
    if (timeout) {
      const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
      wait = left.count() > 0 ? static_cast<int>(left.count()) : 0;
    }
    std::array<pollfd, 2> entries{{{stop.Fd(), POLLIN, 0}, {fd, events, 0}}};
    const int ready = ::poll(entries.data(), entries.size(), wait);
    if (ready < 0 && errno == EINTR) continue;
    if (ready < 0) Fail("poll");
    if (entries[0].revents != 0) return Wake::kStopped;
    if (entries[1].revents != 0) return Wake::kReady;
    if (timeout && steady_clock::now() >= end) return Wake::kTimeout;
  }
}

Descriptor ReserveLocally(std::uint16_t port) {
  Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!socket.IsOpen()) Fail("socket");
  // So a server that comes back on its old port need not wait for the remains of its old connections.
  const int on = 1;
  ::setsockopt(socket.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  const sockaddr_in address = LocalAddress(port);
  if (::bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) Fail("bind");
  return socket;
}

Descriptor ListenLocally(std::uint16_t port) {
  Descriptor socket = ReserveLocally(port);
  if (::listen(socket.Get(), 64) != 0) Fail("listen");
  return socket;
}

std::uint16_t LocalPort(const Descriptor& socket) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  if (::getsockname(socket.Get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) Fail("getsockname");
  return ntohs(address.sin_port);
}

Descriptor ConnectLocally(std::uint16_t port) {
  Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!socket.IsOpen()) Fail("socket");
  const sockaddr_in address = LocalAddress(port);
  if (::connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    Fail("connect");
  }
  ::fcntl(socket.Get(), F_SETFL, O_NONBLOCK);
  return socket;
}

Descriptor Accept(const Descriptor& listener, const StopSignal& stop) {
  while (WaitFor(listener.Get(), POLLIN, stop) == Wake::kReady) {
    Descriptor socket(::accept4(listener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!socket.IsOpen()) continue;
    const int on = 1;
    ::setsockopt(socket.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return socket;
  }
  return {};
}

bool SendAll(const Descriptor& socket, std::string_view bytes, const StopSignal& stop,
             const std::function<void(std::size_t)>& on_sent) {
  while (!bytes.empty()) {
    if (stop.IsRaised()) return false;
    const ssize_t sent = ::send(socket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0 && !IsTransient(errno)) return false;
    if (sent < 0) {
      if (WaitFor(socket.Get(), POLLOUT, stop) == Wake::kStopped) return false;
      continue;
    }
    bytes.remove_prefix(static_cast<std::size_t>(sent));
    if (on_sent) on_sent(static_cast<std::size_t>(sent));
  }
  return true;
}

bool Receive(const Descriptor& socket, std::string& bytes, const StopSignal& stop,
             std::optional<milliseconds> timeout) {
  while (WaitFor(socket.Get(), POLLIN, stop, timeout) == Wake::kReady) {
    std::array<char, 4096> buffer;
    const ssize_t received = ::recv(socket.Get(), buffer.data(), buffer.size(), 0);
    if (received > 0) {
      bytes.append(buffer.data(), static_cast<std::size_t>(received));
      return true;
    }
    if (received == 0 || !IsTransient(errno)) return false;
  }
  return false;
}

bool PeerIsGone(const Descriptor& socket) {
  pollfd entry{socket.Get(), POLLIN, 0};
  if (::poll(&entry, 1, 0) <= 0) return false;
  if ((entry.revents & (POLLERR | POLLHUP | POLLNVAL)) != 0) return true;
  char byte = 0;
  const ssize_t peeked = ::recv(socket.Get(), &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  return peeked == 0 || (peeked < 0 && !IsTransient(errno));
}

void CloseCleanly(Descriptor& socket, const StopSignal& stop) {
  ::shutdown(socket.Get(), SHUT_WR);
  // Closing while bytes of the peer wait unread would turn the clean end into a reset.
  std::string ignored;
  while (Receive(socket, ignored, stop)) ignored.clear();
  socket.Close();
}

void CloseWithReset(Descriptor& socket, const StopSignal& stop) {
  int unsent = 0;
  while (::ioctl(socket.Get(), SIOCOUTQ, &unsent) == 0 && unsent > 0 && !PeerIsGone(socket)) {
    // The kernel does not report that its queue has drained, so this checks again after a moment.
    if (WaitFor(stop.Fd(), POLLIN, stop, milliseconds(1)) == Wake::kStopped) break;
  }
  const linger at_once{1, 0};
  ::setsockopt(socket.Get(), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
  socket.Close();
}

}  // namespace test_support
