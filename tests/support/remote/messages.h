#pragma once
// What a test that runs on another system and the process with its servers say to each other. Not the
// connection and not what the servers do.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/icy_script.h"

namespace test_support {

/// A request (its name, the server's number, arguments) or its answer ("ok" and what was asked for, or
/// "failed" and why).
using Message = std::vector<std::string>;

/// The number of fields, then each with its length before it.
std::string Packed(const Message& message);

/// Reads one message through `receive`, which appends at least one byte to the bytes that it is given, or
/// gives false. `received` keeps what came after it, for the next call.
std::optional<Message> ReadMessage(std::string& received, const std::function<bool(std::string&)>& receive);

/// A script as fields of a message, and back.
void AppendScript(Message& message, const Script& script);
Script ReadScript(const Message& message, std::size_t& at);

}  // namespace test_support
