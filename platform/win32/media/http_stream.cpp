#include "platform/win32/media/http_stream.h"

#include "platform/win32/base/windows_api.h"

#include <wininet.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

#include "platform/http/address.h"
#include "platform/win32/base/detached_thread.h"
#include "platform/win32/internet/request_texts.h"
#include "platform/win32/internet/web_exchange.h"
#include "platform/win32/media/icy_filter.h"
#include "platform/win32/media/locks.h"

namespace platform::win32 {
namespace {

constexpr int kStatusOk = 200;
constexpr std::size_t kPiece = 4096;
/// How often the thread looks whether the connection is still wanted.
constexpr http::milliseconds kLook{20};

PlaybackFailure FailureOfError(DWORD error) {
  switch (error) {
    case ERROR_INTERNET_INVALID_URL:
    case ERROR_INTERNET_UNRECOGNIZED_SCHEME:
      return PlaybackFailure::kBadAddress;
    case ERROR_INTERNET_NAME_NOT_RESOLVED:
      return PlaybackFailure::kUnknownHost;
    case ERROR_INTERNET_CANNOT_CONNECT:
      return PlaybackFailure::kRefused;
    case ERROR_INTERNET_TIMEOUT:
      return PlaybackFailure::kNoAnswer;
    case ERROR_INTERNET_CONNECTION_ABORTED:
    case ERROR_INTERNET_CONNECTION_RESET:
    case ERROR_HTTP_INVALID_SERVER_RESPONSE:
      return PlaybackFailure::kHungUp;
    case ERROR_HTTP_REDIRECT_FAILED:
      return PlaybackFailure::kTooManyRedirects;
    case ERROR_INTERNET_SEC_CERT_DATE_INVALID:
      return PlaybackFailure::kCertificateExpired;
    case ERROR_INTERNET_SEC_CERT_CN_INVALID:
      return PlaybackFailure::kCertificateOtherName;
    case ERROR_INTERNET_INVALID_CA:
      return PlaybackFailure::kCertificateUnknownIssuer;
    case ERROR_INTERNET_SEC_CERT_ERRORS:
    case ERROR_INTERNET_SEC_CERT_REV_FAILED:
    case ERROR_INTERNET_SEC_INVALID_CERT:
    case ERROR_INTERNET_SEC_CERT_REVOKED:
    case ERROR_INTERNET_SECURITY_CHANNEL_ERROR:
      return PlaybackFailure::kNoSecureConnection;
    default:
      return PlaybackFailure::kOther;
  }
}

/// Without ";charset=..." and in lower case.
std::string MediaType(const std::string& content_type) {
  std::string type = content_type.substr(0, content_type.find_first_of("; "));
  std::transform(type.begin(), type.end(), type.begin(),
                 [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
  return type;
}

HttpAnswer AnswerOf(const http::AnswerHeader& header) {
  constexpr int kMostKilobits = 10'000;
  const int kilobits = std::clamp(std::atoi(header.Value("icy-br").c_str()), 0, kMostKilobits);
  return {kStatusOk, MediaType(header.Value("Content-Type")), 1000 * kilobits};
}

}  // namespace

std::shared_ptr<HttpStream> HttpStream::Open(const Text& address, const Text& user_agent,
                                             std::shared_ptr<StreamBuffer> buffer,
                                             std::chrono::milliseconds answer_limit) {
  auto stream = std::make_shared<HttpStream>();
  stream->buffer_ = std::move(buffer);
  const bool started = StartDetached(
      [stream, address, user_agent, answer_limit] { stream->Run(address, user_agent, answer_limit); });
  if (!started) stream->End(PlaybackFailure::kOther, 0);
  return stream;
}

void HttpStream::Cancel() { cancelled_ = true; }

std::optional<HttpAnswer> HttpStream::Answer() const {
  const Lock lock(mutex_);
  return answer_;
}

bool HttpStream::Over() const {
  const Lock lock(mutex_);
  return over_;
}

bool HttpStream::Complete() const {
  const Lock lock(mutex_);
  return complete_;
}

PlaybackFailure HttpStream::Failure() const {
  const Lock lock(mutex_);
  return failure_;
}

int HttpStream::Status() const {
  const Lock lock(mutex_);
  return status_;
}

HttpStream::Clock::time_point HttpStream::LatestNews() const {
  if (appending_) return Clock::now();
  const Lock lock(mutex_);
  return news_;
}

void HttpStream::End(PlaybackFailure failure, int status) {
  const Lock lock(mutex_);
  over_ = true;
  failure_ = failure;
  status_ = status;
}

void HttpStream::Run(const Text& address, const Text& user_agent, std::chrono::milliseconds answer_limit) {
  const auto asked = http::RequestAddress(Utf8(address));
  if (!asked) {
    End(PlaybackFailure::kBadAddress, 0);
    return;
  }
  http::ExchangeOptions options;
  options.address = *asked;
  options.agent = Utf8(user_agent);
  WebExchange exchange(options);
  while (!cancelled_ && !exchange.IsAnswered() && !exchange.HasEnded()) {
    exchange.Work(kLook);
    if (exchange.AnswerOwedFor() > answer_limit) {
      End(PlaybackFailure::kNoAnswer, 0);
      return;
    }
  }
  if (!cancelled_ && exchange.IsAnswered()) {
    Read(exchange);
  } else {
    End(FailureOfError(exchange.Error()), 0);
  }
}

void HttpStream::Read(http::Exchange& exchange) {
  const http::AnswerHeader& header = exchange.Header();
  const int status = std::atoi(header.StatusCode().c_str());
  if (status != kStatusOk) {
    End(PlaybackFailure::kHttpStatus, status);
    return;
  }
  ReadBody(exchange);
}

void HttpStream::ReadBody(http::Exchange& exchange) {
  const http::AnswerHeader& header = exchange.Header();
  IcyFilter filter(std::strtoul(header.Value("icy-metaint").c_str(), nullptr, 10));
  std::vector<char> piece(kPiece);
  while (!cancelled_) {
    const std::size_t count = exchange.Take(std::as_writable_bytes(std::span(piece)));
    if (count == 0 && exchange.HasEnded() && exchange.Buffered() == 0) break;
    if (count == 0) {
      exchange.Work(kLook);
      continue;
    }
    const std::string sound = filter.Sound({piece.data(), count});
    {
      const Lock lock(mutex_);
      news_ = Clock::now();
      if (!answer_ && !sound.empty()) answer_ = AnswerOf(header);
    }
    // A full buffer is not the server's silence.
    appending_ = true;
    const bool appended = buffer_->Append(std::as_bytes(std::span(sound)), cancelled_);
    appending_ = false;
    if (!appended) break;
  }
  const bool has_length = header.ContentLength().has_value();
  const Lock lock(mutex_);
  over_ = true;
  complete_ = !cancelled_ && has_length && exchange.HasEnded() && !exchange.HasFailed();
  failure_ = answer_ ? PlaybackFailure::kConnectionLost : PlaybackFailure::kHungUp;
}

}  // namespace platform::win32
