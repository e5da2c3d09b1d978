#include "platform/win32/internet/body_piece.h"

#include "platform/win32/base/windows_api.h"

#include <wininet.h>

#include <algorithm>

namespace platform::win32 {
namespace {

/// A number that was waited for is asked for once more: the library then knows it.
constexpr int kMostQueries = 2;

}  // namespace

std::uint32_t CauseOf(Operation operation, std::uint32_t error) {
  if (error != ERROR_SUCCESS || operation == Operation::kQuery) return error;
  return ERROR_INTERNET_INTERNAL_ERROR;
}

// Where the number of a query that was waited for is found the system's documentation leaves open: in the
// caller's variable or in the callback's result, where 1 may also be "true". So only the variable counts, and
// its 0 is no end.
std::uint32_t ReadPiece(const BodyOperations& body, std::size_t most, std::string& piece) {
  piece.clear();
  std::size_t count = 0;
  for (int asked = 0; asked < kMostQueries && count == 0; ++asked) {
    const Completion query = body.query();
    if (query.error != ERROR_SUCCESS) return query.error;
    if (query.at_once && query.count == 0) return ERROR_SUCCESS;
    count = query.count;
  }
  // A read waits until its piece is full, so it is asked for what is there; where that is not known for one
  // byte, which waits for no more than the next one or the end.
  return body.read(std::clamp<std::size_t>(count, 1, most), piece).error;
}

}  // namespace platform::win32
