#pragma once
// An exchange on WinINet, for whoever must not wait: a thread of its own waits. Not for the time limits of an
// answer.

#include <cstdint>
#include <memory>

#include "platform/http/exchange.h"
#include "platform/win32/internet/reading.h"

namespace platform::win32 {

/// The exchange begins at once. Every member returns without waiting for the server; Work waits its slice.
class WebExchange final : public http::Exchange {
 public:
  explicit WebExchange(const http::ExchangeOptions& options);
  ~WebExchange() override;
  WebExchange(const WebExchange&) = delete;
  WebExchange& operator=(const WebExchange&) = delete;

  void Work(milliseconds slice) override;
  [[nodiscard]] bool IsAnswered() const override { return reading_->IsAnswered(); }
  [[nodiscard]] const http::AnswerHeader& Header() const override { return reading_->Header(); }
  [[nodiscard]] std::optional<milliseconds> AnswerOwedFor() const override {
    return reading_->AnswerOwedFor();
  }
  [[nodiscard]] bool HasEnded() const override { return reading_->HasEnded(); }
  [[nodiscard]] InternetFailure Failure() const override { return reading_->Failure(); }
  /// The library's own number for a failure (ERROR_INTERNET_..., ERROR_HTTP_...); 0 when it has none.
  [[nodiscard]] std::uint32_t Error() const { return reading_->Error(); }
  [[nodiscard]] std::size_t Buffered() const override { return reading_->Buffered(); }
  [[nodiscard]] milliseconds QuietFor() const override { return reading_->QuietFor(); }
  std::size_t Take(std::span<std::byte> buffer) override { return reading_->Take(buffer); }

 private:
  const milliseconds connect_limit_;
  const std::shared_ptr<Reading> reading_ = std::make_shared<Reading>();
};

}  // namespace platform::win32
