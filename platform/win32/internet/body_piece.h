#pragma once
// How the next bytes of a body are asked for by what WinINet says of them. Not the library's operations
// themselves (internet/library_request.h).

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace platform::win32 {

enum class Operation : std::uint8_t {
  kSend,
  kQuery,  ///< for the number of bytes that are there
  kRead
};

/// What an operation came to.
struct Completion {
  std::uint32_t error = 0;  ///< the library's number, 0 for none
  bool at_once = false;     ///< the call itself succeeded: `count` is what the library says
  std::size_t count = 0;    ///< 0 for a query that was waited for may mean that its number is not known
};

/// The error of an operation that failed with `error`. Only a query may complete with the number 0 in place
/// of "true", which is no failure.
std::uint32_t CauseOf(Operation operation, std::uint32_t error);

struct BodyOperations {
  std::function<Completion()> query;
  /// Reads so many bytes, waiting for all of them, or less at the body's end.
  std::function<Completion(std::size_t wanted, std::string& piece)> read;
};

/// The next bytes of the body, at most `most`, as soon as there are some; empty at its end. The result is the
/// library's number for what went wrong, 0 for nothing.
std::uint32_t ReadPiece(const BodyOperations& body, std::size_t most, std::string& piece);

}  // namespace platform::win32
