#pragma once
// A small HTTP server on 127.0.0.1 for odd answers: errors, silence, redirect loops, cut connections.
// Not a radio server; icecast_server.h runs a real one.

#include <atomic>
#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace test_support {

class MediaHttpServer {
 public:
  /// One request's connection; closed when the handler returns.
  class Connection {
   public:
    Connection(int socket, std::string request, std::atomic<bool>& stopping)
        : socket_(socket), request_(std::move(request)), stopping_(stopping) {}
    /// The request line and headers.
    [[nodiscard]] const std::string& Request() const { return request_; }
    /// False when the client has gone or the server stops.
    bool Send(const std::string& bytes);
    /// Sends at a steady rate, as a live station does; false as above.
    bool SendAtRate(const std::string& bytes, std::size_t bytes_per_second);
    /// Says nothing until the client goes away or the server stops, at most for `limit`.
    void StaySilent(std::chrono::milliseconds limit);
    /// The connection will end with a reset instead of a clean close.
    void ResetAtEnd() const;

   private:
    int socket_;
    std::string request_;
    std::atomic<bool>& stopping_;
  };
  using Handler = std::function<void(Connection&)>;

  MediaHttpServer();
  ~MediaHttpServer();

  /// Answers `path`; every other path gets 404.
  void On(const std::string& path, Handler handler);
  [[nodiscard]] std::string Url(const std::string& path) const;
  [[nodiscard]] std::uint16_t Port() const { return static_cast<std::uint16_t>(port_); }
  /// How many requests for `path` arrived.
  [[nodiscard]] int Requests(const std::string& path) const;
  /// How many connections were accepted, asked or not.
  [[nodiscard]] int Connections() const { return accepted_; }
  /// How many connections are being answered.
  [[nodiscard]] int Open() const { return open_; }

  /// Stops listening (new connections are refused), and listens on the same port again.
  void Refuse();
  void Listen();

 private:
  void Accept(int listener);
  void Answer(int socket);

  int port_ = 0;
  int listener_ = -1;
  std::atomic<bool> stopping_{false};
  std::atomic<bool> refusing_{true};
  std::atomic<int> accepted_{0};
  std::atomic<int> open_{0};
  mutable std::mutex mutex_;
  std::map<std::string, Handler> handlers_;
  std::map<std::string, int> requests_;
  std::list<std::thread> answering_;
  std::thread accepting_;
};

/// A complete answer with its length.
std::string HttpAnswer(const std::string& status, const std::string& type, const std::string& body,
                       const std::string& more_headers = "");
/// The head of an answer without an end.
std::string LiveHead(const std::string& type);

}  // namespace test_support
