#pragma once
// Reads the head of an HTTP request from a connection. Not the request (http_request.h).

#include <optional>
#include <string>

#include "tests/support/http_request.h"
#include "tests/support/local_socket.h"

namespace test_support {

/// Reads one request head. `received` keeps what came after it, for the next call. Nothing when the client
/// leaves first, when the signal was raised, or when the head does not end within 256 KB.
std::optional<HttpRequest> ReadRequest(const Descriptor& socket, std::string& received,
                                       const StopSignal& stop);

}  // namespace test_support
