#pragma once
// What the thread that waits for a server and the thread that asks for its bytes have in common. Not the
// library's operations (internet/request_thread.h).

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/http/exchange.h"

namespace platform::win32 {

using http::milliseconds;

/// All members may be called from both threads. The reading thread reports in this order: Begin and Sent for
/// each hop, Answer, Append ..., End; the asking thread may Cancel at any time.
class Reading {
 public:
  using Clock = std::chrono::steady_clock;

  // What the reading thread reports. After Cancel nothing is kept any more.
  void Begin();
  void Sent();
  void Answer(const http::AnswerHeader& header);
  /// Waits while the buffer is full; false after Cancel.
  bool Append(std::string_view bytes);
  void End(InternetFailure failure, std::uint32_t error = 0);

  /// Nothing is wanted any more: ends every wait inside this object, and those of the library that it can
  /// end.
  void Cancel();
  [[nodiscard]] bool IsCancelled() const { return cancelled_; }

  /// Between these two the reading thread uses library handles, which Cancel closes (children before parents)
  /// to end what waits on them. Lend gives false, and keeps nothing, after Cancel; TakeBack says whether they
  /// are still the caller's to close.
  struct Handles {
    void* session = nullptr;
    void* connection = nullptr;
    void* request = nullptr;
  };
  bool Lend(const Handles& handles);
  bool TakeBack();

  // What the asking thread wants to know.
  /// Waits until something happened since the last call, at most `slice`.
  void Await(milliseconds slice);
  /// For how long a hop has been connecting; nothing when none does.
  [[nodiscard]] std::optional<milliseconds> ConnectingFor() const;
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
  std::optional<Handles> lent_;
};

}  // namespace platform::win32
