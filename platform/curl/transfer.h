#pragma once
// One GET with libcurl: started, processed in slices, read piece by piece, ended at any time.
// Not for the time limits of an answer and not for what its callers do with the bytes.

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/curl/answer_header.h"
#include "ports/internet.h"

namespace platform::curl {

using std::chrono::milliseconds;

enum class Certificates { kChecked, kIgnored };

/// What is sent, and how. Nothing is added but what HTTP/1.1 requires ("Host").
struct TransferOptions {
  std::string address;                    ///< as made by RequestAddress
  std::string agent;                      ///< no "User-Agent" line when empty
  std::vector<std::string> header_lines;  ///< as they are to be sent, without line ends
  Certificates certificates = Certificates::kChecked;
  std::string trusted_certificates;  ///< a PEM file in place of the system's; empty: the system's
  milliseconds connect_limit{10'000};
};

/// Goes straight to the server, never through a proxy. Redirects are followed, at most ten, to http and https
/// only. "ICY 200" counts as status 200. Bodies are read on demand: at most kBufferLimit, and what libcurl
/// itself holds (16 KiB), are read from the server ahead of Take; then the server has to wait.
class Transfer {
 public:
  static constexpr std::size_t kBufferLimit = 64 * 1024;

  /// The transfer begins with the first Work. Without memory or with an unusable address it has failed.
  explicit Transfer(const TransferOptions& options);
  ~Transfer();
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  /// Lets the transfer continue. Waits at most `slice`, and only while nothing happens; after the end too, so
  /// that a caller that keeps asking does not spin.
  void Work(milliseconds slice);

  /// The header of the final answer is there.
  [[nodiscard]] bool IsAnswered() const;
  [[nodiscard]] const AnswerHeader& Header() const;

  /// For how long the connected server has not sent its header; nothing while there is no connection.
  [[nodiscard]] std::optional<milliseconds> AnswerOwedFor() const;

  /// Nothing more will come; what is buffered can still be taken.
  [[nodiscard]] bool HasEnded() const;
  /// It ended too early: refused, cut, timed out, more redirects than allowed, header too long.
  [[nodiscard]] bool HasFailed() const;
  /// Why it failed; kNone when it did not.
  [[nodiscard]] InternetFailure Failure() const;

  /// Bytes that wait to be taken.
  [[nodiscard]] std::size_t Buffered() const;
  /// For how long no byte of the body has come.
  [[nodiscard]] milliseconds QuietFor() const;
  /// Moves waiting bytes into the buffer, up to its size, and returns how many.
  std::size_t Take(std::span<std::byte> buffer);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace platform::curl
