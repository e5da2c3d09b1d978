#include "tests/support/request_reading.h"

namespace test_support {
namespace {

// Far more than any client of the tests sends; it bounds what garbage can make the server keep.
constexpr std::size_t kLongestHead = 256 * 1024;

std::string TargetOf(const std::string& line) {
  const auto start = line.find(' ');
  if (start == std::string::npos) return {};
  return line.substr(start + 1, line.find(' ', start + 1) - start - 1);
}

}  // namespace

std::optional<HttpRequest> ReadRequest(const Descriptor& socket, std::string& received,
                                       const StopSignal& stop) {
  while (received.find("\r\n\r\n") == std::string::npos) {
    if (received.size() > kLongestHead || !Receive(socket, received, stop)) return std::nullopt;
  }
  const std::string head = received.substr(0, received.find("\r\n\r\n") + 2);
  received.erase(0, head.size() + 2);
  const auto line_end = head.find("\r\n");
  HttpRequest request;
  request.line = head.substr(0, line_end);
  request.target = TargetOf(request.line);
  request.headers = head.substr(line_end + 2);
  return request;
}

}  // namespace test_support
