#pragma once
// Sockets on 127.0.0.1 whose every wait can be ended from another thread; the tests' servers are built on it.
// Not a client and not a protocol: it knows nothing of HTTP.

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace test_support {

/// Owns a file descriptor.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : fd_(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int Get() const { return fd_; }
  [[nodiscard]] bool IsOpen() const { return fd_ >= 0; }
  void Close();
  int Release();

 private:
  int fd_ = -1;
};

/// Raised once, wakes every wait that was given it. Safe from any thread.
class StopSignal {
 public:
  StopSignal();
  void Raise();
  [[nodiscard]] bool IsRaised() const;
  [[nodiscard]] int Fd() const { return event_.Get(); }

 private:
  Descriptor event_;
};

enum class Wake { kReady, kStopped, kTimeout };

/// Waits until `fd` is ready for `events` (as poll() names them; an error counts as ready), the signal is
/// raised, or the time is over. Without a timeout it waits for the first two only.
Wake WaitFor(int fd, short events, const StopSignal& stop,
             std::optional<std::chrono::milliseconds> timeout = std::nullopt);

/// Keeps a port of 127.0.0.1 for this process without listening: connections are refused, and no other
/// program is given the port, but ListenLocally may take it. Port 0 chooses a free one. Throws
/// std::runtime_error when the port is taken.
Descriptor ReserveLocally(std::uint16_t port = 0);
/// Listens on 127.0.0.1; port 0 takes a free one. Throws std::runtime_error when the port is taken.
Descriptor ListenLocally(std::uint16_t port);
/// The port on this side of a bound socket.
std::uint16_t LocalPort(const Descriptor& socket);
/// Connects to 127.0.0.1. Throws std::runtime_error when refused.
Descriptor ConnectLocally(std::uint16_t port);
/// The next connection (non-blocking, without delay for small packets); closed when the signal was raised.
Descriptor Accept(const Descriptor& listener, const StopSignal& stop);

/// Sends everything. False when the peer is gone or the signal was raised. `on_sent` is given how many
/// bytes the system has taken, piece by piece.
bool SendAll(const Descriptor& socket, std::string_view bytes, const StopSignal& stop,
             const std::function<void(std::size_t)>& on_sent = {});

/// Appends what has arrived, waiting for at least one byte. False at the end of the stream, on an error, on
/// the signal or when the time is over.
bool Receive(const Descriptor& socket, std::string& bytes, const StopSignal& stop,
             std::optional<std::chrono::milliseconds> timeout = std::nullopt);

/// True once the peer has closed or reset the connection; bytes that wait to be read do not hide a reset, but
/// they do hide a close.
bool PeerIsGone(const Descriptor& socket);

/// Ends the sending side, then waits until the peer closes too, so that nothing of what was sent is lost.
void CloseCleanly(Descriptor& socket, const StopSignal& stop);

/// Cuts the connection with a reset, after what was sent has reached the peer.
void CloseWithReset(Descriptor& socket, const StopSignal& stop);

}  // namespace test_support
