#include "tests/support/scripted_internet.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace test_support {

using platform::InternetHandle;
using platform::InternetRead;
using platform::Text;

std::string Ascii(const Text& text) {
  std::string ascii;
  for (const char16_t unit : text) ascii += unit < 0x80 ? static_cast<char>(unit) : '?';
  return ascii;
}

namespace {

std::string Number(InternetHandle handle) { return std::to_string(static_cast<std::uint32_t>(handle)); }

Text Decimal(std::uint32_t number) {
  const std::string digits = std::to_string(number);
  return Text(digits.begin(), digits.end());
}

}  // namespace

bool ScriptedInternet::Fails(const std::string& operation) const {
  return std::find(failing.begin(), failing.end(), operation) != failing.end();
}

ScriptedAnswer ScriptedInternet::AnswerOf(const Text& name) const {
  const auto found = answers.find(name);
  return found == answers.end() ? answer : found->second;
}

InternetHandle ScriptedInternet::Opened(const std::string& operation, const std::string& arguments,
                                        Node node) {
  const bool fails = Fails(operation);
  const InternetHandle handle{fails ? 0 : ++last_};
  calls.push_back(operation + "(" + arguments + ") = " + Number(handle));
  if (!fails) open_[handle] = std::move(node);
  return handle;
}

InternetHandle ScriptedInternet::InternetOpenW(const Text& agent, std::uint32_t access_type) {
  return Opened("InternetOpenW", Ascii(agent) + ", " + std::to_string(access_type), {});
}

bool ScriptedInternet::SetWaitLimit(InternetHandle session, std::uint32_t milliseconds) {
  calls.push_back("SetWaitLimit(" + Number(session) + ", " + std::to_string(milliseconds) + ")");
  return open_.contains(session);
}

bool ScriptedInternet::Await(const ScriptedAnswer& station, bool is_answered) {
  if (before_answer) before_answer(is_answered);
  failure_ = is_answered ? platform::InternetFailure::kNone : station.failure;
  return is_answered;
}

InternetHandle ScriptedInternet::InternetConnectW(InternetHandle session, const Text& host,
                                                  std::uint16_t port, std::uint32_t service) {
  const std::string arguments =
      Number(session) + ", " + Ascii(host) + ", " + std::to_string(port) + ", " + std::to_string(service);
  if (host.empty()) {
    calls.push_back("InternetConnectW(" + arguments + ") = 0");
    return InternetHandle::kNone;
  }
  return Opened("InternetConnectW", arguments, {host + u":" + Decimal(port), {}});
}

InternetHandle ScriptedInternet::HttpOpenRequestW(InternetHandle connection, const Text& verb,
                                                  const Text& path, const Text& version,
                                                  std::uint32_t flags) {
  const Text name = open_.at(connection).name + path;
  return Opened("HttpOpenRequestW",
                Number(connection) + ", " + Ascii(verb) + ", " + Ascii(path) + ", " + Ascii(version) + ", " +
                    std::to_string(flags),
                {name, AnswerOf(name)});
}

bool ScriptedInternet::HttpSendRequestW(InternetHandle request, const Text& headers) {
  const ScriptedAnswer& station = open_.at(request).answer;
  const bool sent = Await(station, !Fails("HttpSendRequestW") && station.reachable);
  calls.push_back("HttpSendRequestW(" + Number(request) + ", " + Ascii(headers) +
                  ") = " + std::to_string(sent));
  return sent;
}

bool ScriptedInternet::HttpQueryInfoW(InternetHandle request, std::uint32_t info_level,
                                      std::span<std::byte> buffer, std::uint32_t& size) {
  const ScriptedAnswer& station = open_.at(request).answer;
  const Text& text = info_level == platform::kHttpQueryStatusCode ? station.status : station.raw_headers;
  const auto needed = static_cast<std::uint32_t>(text.size() * sizeof(char16_t));
  const bool fits = !text.empty() && buffer.size() >= needed;
  calls.push_back("HttpQueryInfoW(" + Number(request) + ", " + std::to_string(info_level) + ", " +
                  std::to_string(buffer.size()) + ") = " + std::to_string(fits));
  size = needed;
  if (fits) std::memcpy(buffer.data(), text.data(), needed);
  return fits;
}

InternetHandle ScriptedInternet::InternetOpenUrlW(InternetHandle session, const Text& url,
                                                  const Text& headers, std::uint32_t flags) {
  if (before_open) before_open();
  const std::string arguments =
      Number(session) + ", " + Ascii(url) + ", " + Ascii(headers) + ", " + std::to_string(flags);
  const ScriptedAnswer station = AnswerOf(url);
  if (!Await(station, station.reachable && !url.empty())) {
    calls.push_back("InternetOpenUrlW(" + arguments + ") = 0");
    return InternetHandle::kNone;
  }
  return Opened("InternetOpenUrlW", arguments, {url, station});
}

InternetRead ScriptedInternet::InternetReadFile(InternetHandle request, std::span<std::byte> buffer) {
  if (before_read) before_read();
  reads.push_back(buffer.size());
  Node& node = open_.at(request);
  if (node.next_read >= node.answer.reads.size()) return {true, 0, node.answer.closes};
  ScriptedRead& next = node.answer.reads[node.next_read];
  const std::size_t count = std::min(buffer.size(), next.bytes.size());
  std::memcpy(buffer.data(), next.bytes.data(), count);
  next.bytes.erase(0, count);
  const bool ok = next.ok;
  if (next.bytes.empty()) ++node.next_read;
  return {ok, count};
}

bool ScriptedInternet::InternetCloseHandle(InternetHandle handle) {
  calls.push_back("InternetCloseHandle(" + Number(handle) + ")");
  return open_.erase(handle) == 1;
}

namespace {

class ScriptedXmlHttpRequest : public platform::XmlHttpRequest {
 public:
  explicit ScriptedXmlHttpRequest(ScriptedXmlHttpRequests& owner) : owner_(owner) { ++owner_.live_objects; }
  ~ScriptedXmlHttpRequest() override {
    --owner_.live_objects;
    owner_.calls.emplace_back("release");
  }

  bool SetOption(std::int32_t option, std::int32_t value) override {
    owner_.calls.push_back("SetOption(" + std::to_string(option) + ", " + std::to_string(value) + ")");
    return !owner_.failing.contains("SetOption");
  }
  bool Open(const Text& method, const Text& url, bool asynchronous) override {
    owner_.calls.push_back("Open(" + Ascii(method) + ", " + Ascii(url) + ", " +
                           (asynchronous ? "True" : "False") + ")");
    const auto found = owner_.requests.find(url);
    script_ = found == owner_.requests.end() ? owner_.request : found->second;
    return !owner_.failing.contains("Open");
  }
  bool Send() override {
    owner_.calls.emplace_back("Send()");
    if (owner_.on_send) owner_.on_send();
    return !owner_.failing.contains("Send");
  }
  std::int32_t ReadyState() override {
    if (script_.states.empty()) return 1;
    const std::int32_t state = script_.states.front();
    if (script_.states.size() > 1) script_.states.erase(script_.states.begin());
    return state;
  }
  Text ResponseText() override {
    owner_.calls.emplace_back("ResponseText()");
    return script_.body;
  }
  void Abort() override { owner_.calls.emplace_back("Abort()"); }

 private:
  ScriptedXmlHttpRequests& owner_;
  ScriptedRequest script_;
};

}  // namespace

std::unique_ptr<platform::XmlHttpRequest> ScriptedXmlHttpRequests::CreateObject(const Text& class_name) {
  calls.push_back("CreateObject(" + Ascii(class_name) + ")");
  if (!class_is_known) return nullptr;
  return std::make_unique<ScriptedXmlHttpRequest>(*this);
}

}  // namespace test_support
