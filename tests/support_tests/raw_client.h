#pragma once
// A plain socket client for the tests of the servers. Not an HTTP client: it sends and shows bytes.

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>

#include "tests/support/local_socket.h"

namespace test_support {

constexpr auto kDeadline = std::chrono::seconds(10);

/// Reads as a test directs; gives up after kDeadline without a byte.
class RawClient {
 public:
  explicit RawClient(std::uint16_t port) : socket_(ConnectLocally(port)) {}

  RawClient& Ask(const std::string& target, const std::string& headers = "") {
    SendAll(socket_, "GET " + target + " HTTP/1.0\r\n" + headers + "\r\n", stop_);
    return *this;
  }
  std::string ReadToEnd() {
    while (Receive(socket_, pending_, stop_, kDeadline)) {
    }
    return std::exchange(pending_, {});
  }
  std::string Read(std::size_t count) {
    while (pending_.size() < count && Receive(socket_, pending_, stop_, kDeadline)) {
    }
    return Take(count);
  }
  /// The head of an answer, with its empty line.
  std::string ReadHead() {
    while (pending_.find("\r\n\r\n") == std::string::npos && Receive(socket_, pending_, stop_, kDeadline)) {
    }
    const auto end = pending_.find("\r\n\r\n");
    return end == std::string::npos ? "" : Take(end + 4);
  }
  bool NothingArrivesFor(std::chrono::milliseconds time) {
    return pending_.empty() && WaitFor(socket_.Get(), POLLIN, stop_, time) == Wake::kTimeout;
  }
  /// How the next read ends: "bytes", "closed", "reset", "error" or "nothing" (in time).
  std::string NextRead() {
    char byte = 0;
    if (WaitFor(socket_.Get(), POLLIN, stop_, kDeadline) != Wake::kReady) return "nothing";
    const auto received = ::recv(socket_.Get(), &byte, 1, 0);
    if (received > 0) return "bytes";
    if (received == 0) return "closed";
    return errno == ECONNRESET ? "reset" : "error";
  }
  void Close() { socket_.Close(); }

 private:
  std::string Take(std::size_t count) {
    std::string bytes = pending_.substr(0, count);
    pending_.erase(0, bytes.size());
    return bytes;
  }

  StopSignal stop_;
  Descriptor socket_;
  std::string pending_;
};

}  // namespace test_support
