#pragma once
// Test doubles of the two internet ports: they answer from scripts and write down every call in order.
// Not a server; real sockets are ScriptedIcyServer's.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "ports/internet.h"
#include "ports/xml_http_request.h"

namespace test_support {

/// What one InternetReadFile brings. More bytes than the caller's buffer takes stay for the next read.
struct ScriptedRead {
  bool ok = true;
  std::string bytes;
};

/// How a station answers.
struct ScriptedAnswer {
  bool reachable = true;
  /// Why it is not.
  platform::InternetFailure failure = platform::InternetFailure::kNoAnswer;
  platform::Text status = u"200";
  platform::Text raw_headers = u"HTTP/1.1 200 OK\r\n\r\n";
  /// Once they are used up, every read succeeds without bytes.
  std::vector<ScriptedRead> reads;
  /// Whether the station has closed the connection after them, or is only silent.
  bool closes = false;
};

class ScriptedInternet : public platform::Internet {
 public:
  using Handle = platform::InternetHandle;

  Handle InternetOpenW(const platform::Text& agent, std::uint32_t access_type) override;
  bool SetWaitLimit(Handle session, std::uint32_t milliseconds) override;
  Handle InternetConnectW(Handle session, const platform::Text& host, std::uint16_t port,
                          std::uint32_t service) override;
  Handle HttpOpenRequestW(Handle connection, const platform::Text& verb, const platform::Text& path,
                          const platform::Text& version, std::uint32_t flags) override;
  bool HttpSendRequestW(Handle request, const platform::Text& headers) override;
  bool HttpQueryInfoW(Handle request, std::uint32_t info_level, std::span<std::byte> buffer,
                      std::uint32_t& size) override;
  Handle InternetOpenUrlW(Handle session, const platform::Text& url, const platform::Text& headers,
                          std::uint32_t flags) override;
  platform::InternetRead InternetReadFile(Handle request, std::span<std::byte> buffer) override;
  bool InternetCloseHandle(Handle handle) override;
  [[nodiscard]] platform::InternetFailure LastFailure() const override { return failure_; }

  /// By "host:port" and path, or by opened address; every other one gets `answer`.
  std::map<platform::Text, ScriptedAnswer> answers;
  ScriptedAnswer answer;
  /// The names of operations that fail.
  std::vector<std::string> failing;
  /// Runs while an answer is waited for, with whether one will come.
  std::function<void(bool is_answered)> before_answer;
  /// Runs before every read, for what happens meanwhile.
  std::function<void()> before_read;
  /// Runs before an address is opened.
  std::function<void()> before_open;

  /// Every call but the reads, with its arguments: "InternetOpenW(WinampMPEG/5.09, 1) = 1".
  std::vector<std::string> calls;
  /// The buffer size of every read.
  std::vector<std::size_t> reads;
  /// What is open now.
  [[nodiscard]] std::size_t OpenHandles() const { return open_.size(); }

 private:
  struct Node {
    platform::Text name;
    ScriptedAnswer answer;
    std::size_t next_read = 0;
  };
  [[nodiscard]] bool Fails(const std::string& operation) const;
  Handle Opened(const std::string& operation, const std::string& arguments, Node node);
  [[nodiscard]] ScriptedAnswer AnswerOf(const platform::Text& name) const;
  bool Await(const ScriptedAnswer& station, bool is_answered);

  std::map<Handle, Node> open_;
  std::uint32_t last_ = 0;
  platform::InternetFailure failure_ = platform::InternetFailure::kNone;
};

/// How a playlist request goes. The last state of the list stays.
struct ScriptedRequest {
  std::vector<std::int32_t> states = {4};
  platform::Text body;
};

class ScriptedXmlHttpRequests : public platform::XmlHttpRequests {
 public:
  std::unique_ptr<platform::XmlHttpRequest> CreateObject(const platform::Text& class_name) override;

  /// By address; every other one gets `request`.
  std::map<platform::Text, ScriptedRequest> requests;
  ScriptedRequest request;
  bool class_is_known = true;
  /// The names of operations that fail.
  std::set<std::string> failing;
  /// Runs inside Send.
  std::function<void()> on_send;
  /// Every call but ReadyState, with its arguments; "release" for the end of the object.
  std::vector<std::string> calls;
  int live_objects = 0;
};

/// ASCII text for messages and comparisons; other characters become "?".
std::string Ascii(const platform::Text& text);

}  // namespace test_support
