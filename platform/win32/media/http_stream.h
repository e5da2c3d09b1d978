#pragma once
// One HTTP connection that is read by a thread of its own into a buffer. Not for connecting again
// (media/live_stream.h).

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/http/exchange.h"
#include "platform/win32/media/stream_buffer.h"
#include "ports/playback_monitor.h"
#include "ports/text.h"

namespace platform::win32 {

struct HttpAnswer {
  int status = 0;
  std::string content_type;  ///< in lower case, without parameters
  int bit_rate = 0;          ///< bits per second; 0 when not known
};

class HttpStream {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr std::chrono::milliseconds kAnswerLimit{10'000};

  /// Connects, and appends what comes to `buffer`. The answer must have status 200, and come within
  /// `answer_limit` of the request.
  static std::shared_ptr<HttpStream> Open(const Text& address, const Text& user_agent,
                                          std::shared_ptr<StreamBuffer> buffer,
                                          std::chrono::milliseconds answer_limit = kAnswerLimit);

  /// Nothing more is appended. Returns at once.
  void Cancel();
  /// Set as soon as sound may be coming.
  [[nodiscard]] std::optional<HttpAnswer> Answer() const;
  /// It is over, or has never begun.
  [[nodiscard]] bool Over() const;
  /// Everything that was promised has come.
  [[nodiscard]] bool Complete() const;
  [[nodiscard]] PlaybackFailure Failure() const;
  [[nodiscard]] int Status() const;
  /// When something was heard of the server, or the connection was begun.
  [[nodiscard]] Clock::time_point LatestNews() const;

 private:
  void Run(const Text& address, const Text& user_agent, std::chrono::milliseconds answer_limit);
  void Read(http::Exchange& exchange);
  void ReadBody(http::Exchange& exchange);
  void End(PlaybackFailure failure, int status);

  std::shared_ptr<StreamBuffer> buffer_;
  std::atomic<bool> cancelled_ = false;
  std::atomic<bool> appending_ = false;
  mutable std::mutex mutex_;
  std::optional<HttpAnswer> answer_;
  bool over_ = false;
  bool complete_ = false;
  PlaybackFailure failure_ = PlaybackFailure::kNone;
  int status_ = 0;
  Clock::time_point news_ = Clock::now();
};

}  // namespace platform::win32
