#pragma once
// The head of an HTTP request as a server of the tests knows it. Not reading it from a connection
// (request_reading.h), not the answer, and no body.

#include <optional>
#include <string>
#include <string_view>

namespace test_support {

struct HttpRequest {
  std::string line;     ///< "GET /a?b HTTP/1.1", without the line end.
  std::string target;   ///< "/a?b".
  std::string headers;  ///< The raw header lines with their line ends, without the empty line.

  /// The value of a header, its name in any case, without the blanks around it.
  [[nodiscard]] std::optional<std::string> Header(std::string_view name) const;
};

}  // namespace test_support
