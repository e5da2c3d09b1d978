#pragma once
// One GET and its answer, for whatever library carries it: processed in slices, read piece by piece, ended at
// any time. Not the library, not the time limits of an answer, and not what is done with the bytes.

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/http/answer_header.h"
#include "ports/internet.h"

namespace platform::http {

using std::chrono::milliseconds;

/// What is sent, and how long connecting may take.
struct ExchangeOptions {
  std::string address;                    ///< as made by RequestAddress
  std::string agent;                      ///< no "User-Agent" line when empty
  std::vector<std::string> header_lines;  ///< as they are to be sent, without line ends
  milliseconds connect_limit{10'000};     ///< name look-up, connecting, TLS; for each hop of a redirect
};

/// Goes straight to the server, never through a proxy. Redirects are followed, at most kMostRedirects, to
/// http and https only. "ICY 200" counts as status 200. The server is read ahead of Take by at most
/// kBufferLimit and what the library itself holds; then it has to wait. Destroying the object ends the
/// exchange.
class Exchange {
 public:
  static constexpr std::size_t kBufferLimit = 64 * 1024;
  static constexpr int kMostRedirects = 10;

  Exchange() = default;
  virtual ~Exchange() = default;
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  /// Lets the exchange continue. Waits at most `slice`, and only while nothing happens; after the end too, so
  /// that a caller that keeps asking does not spin.
  virtual void Work(milliseconds slice) = 0;

  /// The header of the final answer is there.
  [[nodiscard]] virtual bool IsAnswered() const = 0;
  [[nodiscard]] virtual const AnswerHeader& Header() const = 0;

  /// For how long the connected server has not sent its header; nothing while there is no connection.
  [[nodiscard]] virtual std::optional<milliseconds> AnswerOwedFor() const = 0;

  /// Nothing more will come; what is buffered can still be taken.
  [[nodiscard]] virtual bool HasEnded() const = 0;
  /// Why it ended too early: refused, cut, timed out, more redirects than allowed, header too long. kNone
  /// when it did not.
  [[nodiscard]] virtual InternetFailure Failure() const = 0;
  [[nodiscard]] bool HasFailed() const { return Failure() != InternetFailure::kNone; }

  /// Bytes that wait to be taken.
  [[nodiscard]] virtual std::size_t Buffered() const = 0;
  /// For how long no byte of the body has come.
  [[nodiscard]] virtual milliseconds QuietFor() const = 0;
  /// Moves waiting bytes into the buffer, up to its size, and returns how many.
  virtual std::size_t Take(std::span<std::byte> buffer) = 0;
};

using MakeExchange = std::function<std::unique_ptr<Exchange>(const ExchangeOptions&)>;

}  // namespace platform::http
