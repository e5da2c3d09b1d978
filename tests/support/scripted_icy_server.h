#pragma once
// An HTTP and ICY server on 127.0.0.1 that does exactly what a test's scripts say, and counts what it was
// asked. Not a radio station that plays: that is IcyStation.

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/support/http_request.h"
#include "tests/support/icy_script.h"
#include "tests/support/local_socket.h"

namespace test_support {

/// Serves every connection on its own thread. All members may be called at any time, from any thread. The
/// destructor ends every connection, whatever is left of its script.
class ScriptedIcyServer {
 public:
  /// One request, and what became of its answer so far.
  struct Request : HttpRequest {
    int connection = 0;            ///< Which connection of the server it came on, from 1.
    std::uint64_t bytes_sent = 0;  ///< Bytes of the answer, header too, that the system has taken.
    bool finished = false;         ///< The script is through or the client is gone.
  };
  /// What happens to a connection before it has said anything.
  enum class Welcome { kReadRequest, kClose, kReset, kSilence };

  ScriptedIcyServer();
  /// Takes the named port, for a server that comes back. Throws std::runtime_error when it is taken.
  explicit ScriptedIcyServer(std::uint16_t port);
  ~ScriptedIcyServer();
  ScriptedIcyServer(const ScriptedIcyServer&) = delete;
  ScriptedIcyServer& operator=(const ScriptedIcyServer&) = delete;

  /// The answer to a target. "/a?b" answers exactly that one, "/a" also every "/a?..." without an answer of
  /// its own. Replaces an earlier answer.
  void On(const std::string& target, Script script);
  /// The first request gets the first script, the second the second ..., the last one is repeated.
  void OnEach(const std::string& target, std::vector<Script> scripts);
  /// The answer to every target without one of its own. Without it they get "404 Not Found".
  void OnAny(Script script);
  void SetWelcome(Welcome welcome);

  [[nodiscard]] std::uint16_t Port() const { return port_; }
  /// "http://127.0.0.1:PORT" and the target.
  [[nodiscard]] std::string Url(std::string_view target = "/") const;

  [[nodiscard]] std::vector<Request> Requests() const;
  [[nodiscard]] int Connections() const;
  /// Connections that have not ended yet.
  [[nodiscard]] int OpenConnections() const;
  /// Over all connections, header bytes too.
  [[nodiscard]] std::uint64_t BytesSent() const;

  /// Lets every Script::AwaitSignal of this name continue, now and later.
  void Signal(const std::string& name);

  /// Each waits for at most `deadline` and says whether it came true.
  bool WaitForRequests(std::size_t count, std::chrono::milliseconds deadline) const;
  bool WaitForConnections(int count, std::chrono::milliseconds deadline) const;
  bool WaitForMark(const std::string& name, std::chrono::milliseconds deadline) const;
  bool WaitForBytesSent(std::uint64_t count, std::chrono::milliseconds deadline) const;
  /// Every connection has ended, which proves that the client released it when the script holds it open.
  bool WaitForAllClosed(std::chrono::milliseconds deadline) const;

 private:
  enum class Then { kGoOn, kNextRequest, kEnd };
  struct Answers {
    std::vector<Script> scripts;
    std::size_t served = 0;
  };

  void AcceptConnections();
  void Serve(Descriptor socket, int connection);
  void ServeRequests(Descriptor& socket, int connection);
  std::size_t Record(HttpRequest head, int connection);
  Script ScriptFor(const std::string& target);
  Then Run(const Script& script, Descriptor& socket, std::size_t request);
  Then RunStep(const Script::Step& step, Descriptor& socket, std::size_t request);
  bool SendStep(const Script::Step& step, const Descriptor& socket, std::size_t request);
  bool Flood(const std::string& pattern, const Descriptor& socket, std::size_t request);
  bool SendCounted(const Descriptor& socket, std::string_view bytes, std::size_t request);
  bool AwaitSignal(const std::string& name, const Descriptor& socket);
  template <typename Condition>
  bool WaitUntil(std::chrono::milliseconds deadline, Condition condition) const;

  StopSignal stop_;
  Descriptor listener_;
  std::uint16_t port_;

  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::map<std::string, Answers> answers_;
  std::optional<Script> any_;
  Welcome welcome_ = Welcome::kReadRequest;
  std::vector<Request> requests_;
  int connections_ = 0;
  int open_connections_ = 0;
  std::uint64_t bytes_sent_ = 0;
  std::set<std::string> signals_;
  std::set<std::string> marks_;

  std::list<std::thread> serving_;
  std::thread accepting_;
};

}  // namespace test_support
