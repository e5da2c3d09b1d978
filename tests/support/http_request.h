#pragma once
// The head of an HTTP request as a server of the tests reads it. Not the answer, and no body.

#include <optional>
#include <string>
#include <string_view>

#include "tests/support/local_socket.h"

namespace test_support {

struct HttpRequest {
  std::string line;     ///< "GET /a?b HTTP/1.1", without the line end.
  std::string target;   ///< "/a?b".
  std::string headers;  ///< The raw header lines with their line ends, without the empty line.

  /// The value of a header, its name in any case, without the blanks around it.
  [[nodiscard]] std::optional<std::string> Header(std::string_view name) const;
};

/// Reads one request head. `received` keeps what came after it, for the next call. Nothing when the client
/// leaves first, when the signal was raised, or when the head does not end within 256 KB.
std::optional<HttpRequest> ReadRequest(const Descriptor& socket, std::string& received,
                                       const StopSignal& stop);

}  // namespace test_support
