#pragma once
// A web server on 127.0.0.1 that answers with the bytes it is given, in a thread; and the promise that no
// other server is ever asked. Not for tests with GoogleTest; those have tests/support/scripted_icy_server.h.

#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace fuzz {

/// There is one of these in a process at most.
class Loopback {
 public:
  /// What one run was asked and answered.
  struct Seen {
    std::vector<std::string> requests;  ///< the header of each, as it came
    std::size_t sent = 0;               ///< bytes that the system has taken
  };

  Loopback();
  ~Loopback();
  Loopback(const Loopback&) = delete;
  Loopback& operator=(const Loopback&) = delete;

  [[nodiscard]] std::uint16_t Port() const { return port_; }

  /// The answers to the next connections, one each; the last one is given again and again. `repeated` times
  /// its bytes follow each other.
  void Answer(std::vector<std::string> answers, int repeated);

  /// Waits until every connection made so far has been answered, and forgets the answers.
  Seen Finish();

 private:
  void ServeOne(int connection);
  void Run();

  int listener_ = -1;
  std::uint16_t port_ = 0;
  std::mutex mutex_;
  std::vector<std::string> answers_;
  int repeated_ = 1;
  Seen seen_;
  std::thread thread_;
};

}  // namespace fuzz
