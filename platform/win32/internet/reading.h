#pragma once
// What the thread that waits for a server and the thread that asks for its bytes have in common. Not the
// library's operations (internet/library_request.h).

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/http/exchange.h"

namespace platform::win32 {

using http::milliseconds;

/// All members may be called from both threads. The reading thread reports in this order: Begin and Sent for
/// each hop, Answer, Append ..., End; the asking thread may Cancel at any time. After Cancel no answer and no
/// bytes are kept.
class Reading {
 public:
  using Clock = std::chrono::steady_clock;

  // What the reading thread reports.
  void Begin();
  void Sent();
  void Answer(const http::AnswerHeader& header);
  /// Waits while the buffer is full; false after Cancel.
  bool Append(std::string_view bytes);
  void End(InternetFailure failure, std::uint32_t error = 0);

  // What the reading thread waits for.
  /// Waits until `condition`, which is asked under the object's lock, holds; false after Cancel.
  bool WaitUntil(const std::function<bool()>& condition);
  /// Makes a change for which WaitUntil waits, under the object's lock; for any thread.
  void Change(const std::function<void()>& change);

  /// Nothing is wanted any more: ends every wait of the reading thread. The library is not touched: its
  /// handles belong to that thread.
  void Cancel();
  [[nodiscard]] bool IsCancelled() const { return cancelled_; }

  // What the asking thread wants to know.
  /// Waits until something happened since the last call, at most `slice`.
  void Await(milliseconds slice);
  /// Ends with a failure, and cancels, when a hop has been connecting for that long.
  void LimitConnecting(milliseconds limit, std::uint32_t error);
  [[nodiscard]] std::optional<milliseconds> AnswerOwedFor() const;
  [[nodiscard]] bool IsAnswered() const;
  /// Does not change once IsAnswered.
  [[nodiscard]] const http::AnswerHeader& Header() const;
  [[nodiscard]] bool HasEnded() const;
  [[nodiscard]] InternetFailure Failure() const;
  /// The library's own number for it; 0 when it has none.
  [[nodiscard]] std::uint32_t Error() const;
  [[nodiscard]] std::size_t Buffered() const;
  [[nodiscard]] milliseconds QuietFor() const;
  std::size_t Take(std::span<std::byte> buffer);

 private:
  void Note();
  void EndLocked(InternetFailure failure, std::uint32_t error);
  [[nodiscard]] std::size_t BufferedLocked() const { return buffer_.size() - taken_; }

  std::atomic<bool> cancelled_ = false;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t events_ = 0;
  std::uint64_t events_seen_ = 0;
  std::optional<Clock::time_point> connecting_since_;
  std::optional<Clock::time_point> owed_since_;
  bool answered_ = false;
  http::AnswerHeader header_;
  bool ended_ = false;
  InternetFailure failure_ = InternetFailure::kNone;
  std::uint32_t error_ = 0;
  std::string buffer_;
  std::size_t taken_ = 0;  ///< from the start of buffer_
  Clock::time_point last_arrival_ = Clock::now();
};

}  // namespace platform::win32
