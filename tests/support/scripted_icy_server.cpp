#include "tests/support/scripted_icy_server.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <utility>

#include "tests/support/request_reading.h"

namespace test_support {
namespace {

using std::chrono::milliseconds;

// How often a wait for the test's signal looks whether the client is still there.
constexpr milliseconds kLook{5};

}  // namespace

ScriptedIcyServer::ScriptedIcyServer() : ScriptedIcyServer(0) {}

ScriptedIcyServer::ScriptedIcyServer(std::uint16_t port)
    : listener_(ListenLocally(port)), port_(LocalPort(listener_)) {
  accepting_ = std::thread([this] { AcceptConnections(); });
}

ScriptedIcyServer::~ScriptedIcyServer() {
  stop_.Raise();
  {
    const std::lock_guard lock(mutex_);
    changed_.notify_all();
  }
  accepting_.join();
  for (std::thread& thread : serving_) thread.join();
}

void ScriptedIcyServer::On(const std::string& target, Script script) { OnEach(target, {std::move(script)}); }

void ScriptedIcyServer::OnEach(const std::string& target, std::vector<Script> scripts) {
  const std::lock_guard lock(mutex_);
  answers_[target] = {std::move(scripts), 0};
}

void ScriptedIcyServer::OnAny(Script script) {
  const std::lock_guard lock(mutex_);
  any_ = std::move(script);
}

void ScriptedIcyServer::SetWelcome(Welcome welcome) {
  const std::lock_guard lock(mutex_);
  welcome_ = welcome;
}

std::string ScriptedIcyServer::Url(std::string_view target) const {
  return "http://127.0.0.1:" + std::to_string(port_) + std::string(target);
}

std::vector<ScriptedIcyServer::Request> ScriptedIcyServer::Requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

int ScriptedIcyServer::Connections() const {
  const std::lock_guard lock(mutex_);
  return connections_;
}

int ScriptedIcyServer::OpenConnections() const {
  const std::lock_guard lock(mutex_);
  return open_connections_;
}

std::uint64_t ScriptedIcyServer::BytesSent() const {
  const std::lock_guard lock(mutex_);
  return bytes_sent_;
}

void ScriptedIcyServer::Signal(const std::string& name) {
  const std::lock_guard lock(mutex_);
  signals_.insert(name);
  changed_.notify_all();
}

template <typename Condition>
bool ScriptedIcyServer::WaitUntil(milliseconds deadline, Condition condition) const {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, deadline, condition);
}

bool ScriptedIcyServer::WaitForRequests(std::size_t count, milliseconds deadline) const {
  return WaitUntil(deadline, [&] { return requests_.size() >= count; });
}

bool ScriptedIcyServer::WaitForConnections(int count, milliseconds deadline) const {
  return WaitUntil(deadline, [&] { return connections_ >= count; });
}

bool ScriptedIcyServer::WaitForMark(const std::string& name, milliseconds deadline) const {
  return WaitUntil(deadline, [&] { return marks_.contains(name); });
}

bool ScriptedIcyServer::WaitForBytesSent(std::uint64_t count, milliseconds deadline) const {
  return WaitUntil(deadline, [&] { return bytes_sent_ >= count; });
}

bool ScriptedIcyServer::WaitForAllClosed(milliseconds deadline) const {
  return WaitUntil(deadline, [&] { return open_connections_ == 0; });
}

void ScriptedIcyServer::AcceptConnections() {
  while (true) {
    Descriptor socket = Accept(listener_, stop_);
    if (!socket.IsOpen()) return;
    const std::lock_guard lock(mutex_);
    const int connection = ++connections_;
    ++open_connections_;
    changed_.notify_all();
    serving_.emplace_back(
        [this, connection, owned = std::move(socket)]() mutable { Serve(std::move(owned), connection); });
  }
}

void ScriptedIcyServer::Serve(Descriptor socket, int connection) {
  Welcome welcome;
  {
    const std::lock_guard lock(mutex_);
    welcome = welcome_;
  }
  if (welcome == Welcome::kReadRequest) ServeRequests(socket, connection);
  if (welcome == Welcome::kReset) CloseWithReset(socket, stop_);
  if (welcome == Welcome::kClose) CloseCleanly(socket, stop_);
  std::string ignored;
  while (socket.IsOpen() && Receive(socket, ignored, stop_)) ignored.clear();
  socket.Close();
  const std::lock_guard lock(mutex_);
  --open_connections_;
  changed_.notify_all();
}

void ScriptedIcyServer::ServeRequests(Descriptor& socket, int connection) {
  std::string received;
  Then then = Then::kNextRequest;
  while (then == Then::kNextRequest) {
    const auto head = ReadRequest(socket, received, stop_);
    if (!head) break;
    const std::size_t request = Record(*head, connection);
    then = Run(ScriptFor(head->target), socket, request);
    const std::lock_guard lock(mutex_);
    requests_[request].finished = true;
    changed_.notify_all();
  }
  if (socket.IsOpen() && then == Then::kEnd) socket.Close();
}

std::size_t ScriptedIcyServer::Record(HttpRequest head, int connection) {
  const std::lock_guard lock(mutex_);
  requests_.push_back({std::move(head), connection});
  changed_.notify_all();
  return requests_.size() - 1;
}

Script ScriptedIcyServer::ScriptFor(const std::string& target) {
  const std::lock_guard lock(mutex_);
  auto found = answers_.find(target);
  if (found == answers_.end()) found = answers_.find(target.substr(0, target.find('?')));
  if (found == answers_.end() || found->second.scripts.empty()) {
    return any_.value_or(
        Script().Send(Header("HTTP/1.1 404 Not Found", {"Content-Length: 0", "Connection: close"})));
  }
  Answers& answers = found->second;
  const std::size_t turn = std::min(answers.served++, answers.scripts.size() - 1);
  return answers.scripts[turn];
}

ScriptedIcyServer::Then ScriptedIcyServer::Run(const Script& script, Descriptor& socket,
                                               std::size_t request) {
  for (const Script::Step& step : script.Steps()) {
    const Then then = RunStep(step, socket, request);
    if (then != Then::kGoOn) return then;
  }
  CloseCleanly(socket, stop_);
  return Then::kEnd;
}

ScriptedIcyServer::Then ScriptedIcyServer::RunStep(const Script::Step& step, Descriptor& socket,
                                                   std::size_t request) {
  const auto go_on_if = [](bool condition) { return condition ? Then::kGoOn : Then::kEnd; };
  switch (step.kind) {
    case Script::Kind::kSend:
      return go_on_if(SendStep(step, socket, request));
    case Script::Kind::kStall:
      return go_on_if(WaitFor(stop_.Fd(), POLLIN, stop_, step.time) == Wake::kTimeout);
    case Script::Kind::kHold: {
      std::string ignored;
      while (Receive(socket, ignored, stop_)) ignored.clear();
      return Then::kEnd;
    }
    case Script::Kind::kAwaitSignal:
      return go_on_if(AwaitSignal(step.bytes, socket));
    case Script::Kind::kMark: {
      const std::lock_guard lock(mutex_);
      marks_.insert(step.bytes);
      changed_.notify_all();
      return Then::kGoOn;
    }
    case Script::Kind::kFlood:
      return go_on_if(Flood(step.bytes, socket, request));
    case Script::Kind::kNextRequest:
      return Then::kNextRequest;
    case Script::Kind::kClose:
      CloseCleanly(socket, stop_);
      return Then::kEnd;
    case Script::Kind::kReset:
      CloseWithReset(socket, stop_);
      return Then::kEnd;
  }
  return Then::kEnd;
}

bool ScriptedIcyServer::SendStep(const Script::Step& step, const Descriptor& socket, std::size_t request) {
  const std::string_view all = step.bytes;
  const std::size_t piece = step.piece == 0 ? std::max<std::size_t>(all.size(), 1) : step.piece;
  for (std::size_t start = 0; start < all.size(); start += piece) {
    const bool wait = start > 0 && step.time.count() > 0;
    if (wait && WaitFor(stop_.Fd(), POLLIN, stop_, step.time) == Wake::kStopped) return false;
    if (!SendCounted(socket, all.substr(start, piece), request)) return false;
  }
  return true;
}

bool ScriptedIcyServer::Flood(const std::string& pattern, const Descriptor& socket, std::size_t request) {
  const int small = 16 * 1024;
  ::setsockopt(socket.Get(), SOL_SOCKET, SO_SNDBUF, &small, sizeof small);
  while (SendCounted(socket, pattern, request)) {
  }
  return false;
}

bool ScriptedIcyServer::SendCounted(const Descriptor& socket, std::string_view bytes, std::size_t request) {
  return SendAll(socket, bytes, stop_, [this, request](std::size_t count) {
    const std::lock_guard lock(mutex_);
    bytes_sent_ += count;
    requests_[request].bytes_sent += count;
    changed_.notify_all();
  });
}

bool ScriptedIcyServer::AwaitSignal(const std::string& name, const Descriptor& socket) {
  std::unique_lock lock(mutex_);
  while (!signals_.contains(name)) {
    if (stop_.IsRaised() || PeerIsGone(socket)) return false;
    changed_.wait_for(lock, kLook);
  }
  return true;
}

}  // namespace test_support
