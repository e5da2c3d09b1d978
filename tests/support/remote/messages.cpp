#include "tests/support/remote/messages.h"

#include <chrono>
#include <cstdlib>

namespace test_support {
namespace {

using Receive = std::function<bool(std::string&)>;

bool ReadNumber(std::string& received, const Receive& receive, std::size_t& number) {
  while (received.find('\n') == std::string::npos) {
    if (!receive(received)) return false;
  }
  number = std::strtoul(received.c_str(), nullptr, 10);
  received.erase(0, received.find('\n') + 1);
  return true;
}

}  // namespace

std::string Packed(const Message& message) {
  std::string packed = std::to_string(message.size()) + "\n";
  for (const std::string& field : message) packed += std::to_string(field.size()) + "\n" + field;
  return packed;
}

std::optional<Message> ReadMessage(std::string& received, const Receive& receive) {
  std::size_t count = 0;
  if (!ReadNumber(received, receive, count)) return std::nullopt;
  Message message;
  for (std::size_t field = 0; field < count; ++field) {
    std::size_t size = 0;
    if (!ReadNumber(received, receive, size)) return std::nullopt;
    while (received.size() < size) {
      if (!receive(received)) return std::nullopt;
    }
    message.push_back(received.substr(0, size));
    received.erase(0, size);
  }
  return message;
}

void AppendScript(Message& message, const Script& script) {
  message.push_back(std::to_string(script.Steps().size()));
  for (const Script::Step& step : script.Steps()) {
    message.push_back(std::to_string(static_cast<int>(step.kind)));
    message.push_back(step.bytes);
    message.push_back(std::to_string(step.piece));
    message.push_back(std::to_string(step.time.count()));
  }
}

Script ReadScript(const Message& message, std::size_t& at) {
  std::vector<Script::Step> steps;
  const std::size_t count = std::stoul(message.at(at++));
  for (std::size_t step = 0; step < count; ++step) {
    const auto kind = static_cast<Script::Kind>(std::stoi(message.at(at++)));
    const std::string& bytes = message.at(at++);
    const std::size_t piece = std::stoul(message.at(at++));
    steps.push_back({kind, bytes, piece, std::chrono::milliseconds(std::stol(message.at(at++)))});
  }
  return Script(std::move(steps));
}

}  // namespace test_support
