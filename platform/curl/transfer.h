#pragma once
// An exchange on libcurl. Not for the time limits of an answer and not for what its callers do with the
// bytes.

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "platform/http/exchange.h"

namespace platform::curl {

using http::milliseconds;

enum class Certificates { kChecked, kIgnored };

/// Nothing is sent but what the options name and what HTTP/1.1 requires ("Host").
struct TransferOptions : http::ExchangeOptions {
  Certificates certificates = Certificates::kChecked;
  std::string trusted_certificates;  ///< a PEM file in place of the system's; empty: the system's
};

/// Besides its own buffer libcurl holds 16 KiB of a body.
class Transfer final : public http::Exchange {
 public:
  /// The transfer begins with the first Work. Without memory or with an unusable address it has failed.
  explicit Transfer(const TransferOptions& options);
  ~Transfer() override;
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  void Work(milliseconds slice) override;
  [[nodiscard]] bool IsAnswered() const override;
  [[nodiscard]] const http::AnswerHeader& Header() const override;
  [[nodiscard]] std::optional<milliseconds> AnswerOwedFor() const override;
  [[nodiscard]] bool HasEnded() const override;
  [[nodiscard]] InternetFailure Failure() const override;
  [[nodiscard]] std::size_t Buffered() const override;
  [[nodiscard]] milliseconds QuietFor() const override;
  std::size_t Take(std::span<std::byte> buffer) override;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace platform::curl
