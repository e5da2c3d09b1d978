#include "platform/win32/media/http_stream.h"

#include "platform/win32/base/windows_api.h"

#include <wininet.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <thread>
#include <utility>
#include <vector>

#include "platform/win32/base/wide.h"
#include "platform/win32/media/icy_filter.h"

namespace platform::win32 {
namespace {

constexpr int kStatusOk = 200;
constexpr DWORD kPiece = 4096;
/// The answer must come in this time; the systems that ignore it are watched by the caller.
constexpr DWORD kAnswerMilliseconds = 10000;

class Internet {
 public:
  explicit Internet(HINTERNET handle) : handle_(handle) {}
  ~Internet() {
    if (handle_ != nullptr) InternetCloseHandle(handle_);
  }
  Internet(const Internet&) = delete;
  Internet& operator=(const Internet&) = delete;
  [[nodiscard]] HINTERNET Get() const { return handle_; }

 private:
  HINTERNET handle_;
};

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
    case ERROR_INTERNET_SECURITY_CHANNEL_ERROR:
      return PlaybackFailure::kNoSecureConnection;
    default:
      return PlaybackFailure::kOther;
  }
}

int StatusOf(HINTERNET request) {
  DWORD status = 0;
  DWORD size = sizeof status;
  const BOOL known =
      HttpQueryInfoW(request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status, &size, nullptr);
  return known ? static_cast<int>(status) : 0;
}

HeaderFields FieldsOf(HINTERNET request) {
  DWORD size = 0;
  HttpQueryInfoA(request, HTTP_QUERY_RAW_HEADERS_CRLF, nullptr, &size, nullptr);
  std::string lines(size, '\0');
  if (size == 0 || !HttpQueryInfoA(request, HTTP_QUERY_RAW_HEADERS_CRLF, lines.data(), &size, nullptr))
    return {};
  lines.resize(size);
  return ReadHeaderFields(lines);
}

std::string Field(const HeaderFields& fields, const std::string& name) {
  const auto found = fields.find(name);
  return found == fields.end() ? std::string() : found->second;
}

/// Without ";charset=..." and in lower case.
std::string MediaType(const std::string& content_type) {
  std::string type = content_type.substr(0, content_type.find_first_of("; "));
  std::transform(type.begin(), type.end(), type.begin(),
                 [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
  return type;
}

HttpAnswer AnswerOf(int status, const HeaderFields& fields) {
  return {status, MediaType(Field(fields, "content-type")),
          1000 * std::atoi(Field(fields, "icy-br").c_str())};
}

}  // namespace

std::shared_ptr<HttpStream> HttpStream::Open(const Text& address, const Text& user_agent,
                                             std::shared_ptr<StreamBuffer> buffer) {
  auto stream = std::make_shared<HttpStream>();
  stream->buffer_ = std::move(buffer);
  std::thread([stream, address, user_agent] { stream->Run(address, user_agent); }).detach();
  return stream;
}

void HttpStream::Cancel() {
  cancelled_ = true;
  const std::lock_guard lock(mutex_);
  if (void* const session = std::exchange(session_, nullptr)) InternetCloseHandle(session);
}

std::optional<HttpAnswer> HttpStream::Answer() const {
  const std::lock_guard lock(mutex_);
  return answer_;
}

bool HttpStream::Over() const {
  const std::lock_guard lock(mutex_);
  return over_;
}

bool HttpStream::Complete() const {
  const std::lock_guard lock(mutex_);
  return complete_;
}

PlaybackFailure HttpStream::Failure() const {
  const std::lock_guard lock(mutex_);
  return failure_;
}

int HttpStream::Status() const {
  const std::lock_guard lock(mutex_);
  return status_;
}

HttpStream::Clock::time_point HttpStream::LatestNews() const {
  if (appending_) return Clock::now();
  const std::lock_guard lock(mutex_);
  return news_;
}

void HttpStream::End(PlaybackFailure failure, int status) {
  const std::lock_guard lock(mutex_);
  over_ = true;
  failure_ = failure;
  status_ = status;
}

/// Who cancels closes the session, which ends what waits on it where the system can.
bool HttpStream::Keep(void* session) {
  const std::lock_guard lock(mutex_);
  if (cancelled_ || session == nullptr) return false;
  session_ = session;
  return true;
}

void HttpStream::Run(const Text& address, const Text& user_agent) {
  HINTERNET session = InternetOpenW(Wide(user_agent), INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
  if (!Keep(session)) {
    if (session != nullptr) InternetCloseHandle(session);
    End(PlaybackFailure::kOther, 0);
    return;
  }
  DWORD limit = kAnswerMilliseconds;
  InternetSetOptionW(session, INTERNET_OPTION_CONNECT_TIMEOUT, &limit, sizeof limit);
  constexpr DWORD kFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_COOKIES |
                           INTERNET_FLAG_NO_UI | INTERNET_FLAG_PRAGMA_NOCACHE;
  {
    const Internet request(InternetOpenUrlW(session, Wide(address), nullptr, 0, kFlags, 0));
    if (request.Get() == nullptr) {
      End(FailureOfError(GetLastError()), 0);
    } else {
      Read(request.Get());
    }
  }
  Cancel();
}

void HttpStream::Read(void* request) {
  const int status = StatusOf(request);
  if (status != kStatusOk && status != 0) {
    End(PlaybackFailure::kHttpStatus, status);
    return;
  }
  const HeaderFields fields = FieldsOf(request);
  const HttpAnswer headers = AnswerOf(kStatusOk, fields);
  ReadBody(request, headers, std::strtoull(Field(fields, "content-length").c_str(), nullptr, 10),
           std::strtoul(Field(fields, "icy-metaint").c_str(), nullptr, 10));
}

void HttpStream::ReadBody(void* request, const HttpAnswer& headers, std::uint64_t promised,
                          std::size_t interval) {
  IcyFilter filter(interval);
  std::vector<char> piece(kPiece);
  std::uint64_t received = 0;
  while (!cancelled_) {
    DWORD available = 0;
    DWORD count = 0;
    // A read waits until its piece is full, so it is asked for what is there.
    const bool answered =
        InternetQueryDataAvailable(request, &available, 0, 0) != FALSE && available > 0 &&
        InternetReadFile(request, piece.data(), std::min(available, kPiece), &count) != FALSE;
    if (!answered || count == 0) break;
    received += count;
    const std::string sound = filter.Sound({piece.data(), count});
    {
      const std::lock_guard lock(mutex_);
      news_ = Clock::now();
      if (!answer_ && !sound.empty())
        answer_ = filter.Fields().empty() ? headers : AnswerOf(kStatusOk, filter.Fields());
    }
    // A full buffer is not the server's silence.
    appending_ = true;
    const bool appended = buffer_->Append(std::as_bytes(std::span(sound)), cancelled_);
    appending_ = false;
    if (!appended) break;
  }
  const std::lock_guard lock(mutex_);
  over_ = true;
  complete_ = promised != 0 && received >= promised;
  failure_ = answer_ ? PlaybackFailure::kConnectionLost : PlaybackFailure::kHungUp;
}

}  // namespace platform::win32
