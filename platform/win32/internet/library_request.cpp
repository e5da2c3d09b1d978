#include "platform/win32/internet/library_request.h"

#include "platform/win32/base/windows_api.h"

#include <wininet.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>
#include <utility>

#include "platform/win32/internet/request_texts.h"

namespace platform::win32 {
namespace {

constexpr DWORD kFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_COOKIES |
                         INTERNET_FLAG_NO_UI | INTERNET_FLAG_NO_AUTH | INTERNET_FLAG_NO_AUTO_REDIRECT;

}  // namespace

/// What the library writes to and reports to, until it reports the end of the request's handle.
struct LibraryRequest::State {
  static constexpr DWORD kPiece = 16 * 1024;

  State(std::shared_ptr<Reading> for_reading, std::shared_ptr<void> in_place)
      : reading(std::move(for_reading)), place(std::move(in_place)) {}

  const std::shared_ptr<Reading> reading;
  const std::shared_ptr<void> place;
  std::atomic<bool> connected_anew = false;
  // Read and written under the reading's lock while an operation runs.
  bool is_complete = false;
  bool has_succeeded = false;
  DWORD error = 0;
  // The operation's own while it runs.
  std::string lines;
  DWORD count = 0;
  std::array<char, kPiece> piece{};
  /// The library's reference.
  std::shared_ptr<State> self;
};

struct LibraryRequest::Callback {
  // Called by the library on any thread, also inside its operations.
  static void CALLBACK OnStatus(HINTERNET /*handle*/, DWORD_PTR context, DWORD status, void* information,
                                DWORD /*length*/) {
    State& state = *reinterpret_cast<State*>(context);
    switch (status) {
      case INTERNET_STATUS_RESOLVING_NAME:
      case INTERNET_STATUS_CONNECTING_TO_SERVER:
        state.connected_anew = true;
        break;
      case INTERNET_STATUS_REQUEST_SENT:
        state.reading->Sent();
        break;
      case INTERNET_STATUS_REQUEST_COMPLETE:
        Complete(state, *static_cast<const INTERNET_ASYNC_RESULT*>(information));
        break;
      case INTERNET_STATUS_HANDLE_CLOSING:
        std::exchange(state.self, nullptr).reset();
        break;
      default:
        break;
    }
  }

  static void Complete(State& state, const INTERNET_ASYNC_RESULT& result) {
    state.reading->Change([&state, &result] {
      state.is_complete = true;
      state.has_succeeded = result.dwResult != FALSE;
      state.error = result.dwError;
    });
  }
};

LibraryRequest::LibraryRequest(const std::shared_ptr<Reading>& reading, const http::ExchangeOptions& options,
                               const http::AddressParts& parts, std::shared_ptr<void> place)
    : state_(std::make_shared<State>(reading, std::move(place))) {
  Open(options, parts);
  if (request_ == nullptr) return;
  BOOL ignore = TRUE;
  ::InternetSetOptionA(request_, INTERNET_OPTION_IGNORE_OFFLINE, &ignore, sizeof ignore);
  if (::InternetSetStatusCallbackA(request_, &Callback::OnStatus) != INTERNET_INVALID_STATUS_CALLBACK) {
    state_->self = state_;
    return;
  }
  ::InternetCloseHandle(std::exchange(request_, nullptr));
}

LibraryRequest::~LibraryRequest() {
  for (void* const handle : {request_, connection_, session_}) {
    if (handle != nullptr) ::InternetCloseHandle(handle);
  }
}

// The operations for bytes ("A") pass on what they are given; those for UTF-16 would go through the system's
// code page.
void LibraryRequest::Open(const http::ExchangeOptions& options, const http::AddressParts& parts) {
  session_ = ::InternetOpenA(options.agent.c_str(), INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr,
                             INTERNET_FLAG_ASYNC);
  if (session_ == nullptr) return;
  SetLimits(options);
  connection_ = ::InternetConnectA(session_, HostName(parts.host).c_str(), parts.port, nullptr, nullptr,
                                   INTERNET_SERVICE_HTTP, 0, 0);
  if (connection_ == nullptr) return;
  const DWORD secure = parts.security == http::Security::kTls ? INTERNET_FLAG_SECURE : 0;
  request_ = ::HttpOpenRequestA(connection_, "GET", parts.target.c_str(), "HTTP/1.1", nullptr, nullptr,
                                kFlags | secure, reinterpret_cast<DWORD_PTR>(state_.get()));
}

// The attempts stay as many as the library makes by itself: their number is also that of a host's addresses
// that are tried, and one that is out of reach may be the first.
void LibraryRequest::SetLimits(const http::ExchangeOptions& options) {
  const auto set = [this](DWORD option, DWORD value) {
    ::InternetSetOptionA(session_, option, &value, sizeof value);
  };
  set(INTERNET_OPTION_CONNECT_TIMEOUT, static_cast<DWORD>(options.connect_limit.count()));
  // How long a silent server is waited for is up to whoever asks for its bytes.
  set(INTERNET_OPTION_RECEIVE_TIMEOUT, INFINITE);
  set(INTERNET_OPTION_DATA_RECEIVE_TIMEOUT, INFINITE);
}

// For the result of an operation, before which is_complete was cleared; a request is sent once.
std::uint32_t LibraryRequest::Await(Operation operation, BOOL done) {
  if (done != FALSE) return ERROR_SUCCESS;
  const DWORD error = ::GetLastError();
  if (error != ERROR_IO_PENDING) return CauseOf(operation, error);
  const State& state = *state_;
  if (!state.reading->WaitUntil([&state] { return state.is_complete; }))
    return ERROR_INTERNET_OPERATION_CANCELLED;
  return state.has_succeeded ? ERROR_SUCCESS : CauseOf(operation, state.error);
}

std::uint32_t LibraryRequest::Send(std::string lines) {
  if (request_ == nullptr) return ERROR_INTERNET_INTERNAL_ERROR;
  state_->lines = std::move(lines);
  return Await(Operation::kSend, ::HttpSendRequestA(request_, state_->lines.data(),
                                                    static_cast<DWORD>(state_->lines.size()), nullptr, 0));
}

bool LibraryRequest::ReadHeader(http::AnswerHeader& header) {
  header = {};
  DWORD size = 0;
  ::HttpQueryInfoA(request_, HTTP_QUERY_RAW_HEADERS_CRLF, nullptr, &size, nullptr);
  std::string block(size, '\0');
  if (size == 0 || !::HttpQueryInfoA(request_, HTTP_QUERY_RAW_HEADERS_CRLF, block.data(), &size, nullptr))
    return false;
  block.resize(size);
  for (std::size_t at = 0; at < block.size();) {
    const std::size_t next = std::min(block.find('\n', at), block.size() - 1) + 1;
    const std::string_view line = std::string_view(block).substr(at, next - at);
    if (!header.AddLine(line)) return false;
    at = next;
  }
  return header.AddLine("\r\n") && !header.StatusCode().empty();
}

Completion LibraryRequest::CountBytes() {
  state_->count = 0;
  state_->is_complete = false;
  const BOOL done = ::InternetQueryDataAvailable(request_, &state_->count, 0, 0);
  const std::uint32_t error = Await(Operation::kQuery, done);
  return {error, done != FALSE, error == ERROR_SUCCESS ? state_->count : 0};
}

Completion LibraryRequest::ReadBytes(std::size_t wanted, std::string& piece) {
  state_->count = 0;
  state_->is_complete = false;
  const BOOL done =
      ::InternetReadFile(request_, state_->piece.data(), static_cast<DWORD>(wanted), &state_->count);
  const std::uint32_t error = Await(Operation::kRead, done);
  // Until it reports its end, the library may still be writing into both.
  if (error != ERROR_SUCCESS) return {error, done != FALSE, 0};
  piece.assign(state_->piece.data(), std::min<std::size_t>(state_->count, wanted));
  return {error, done != FALSE, piece.size()};
}

std::uint32_t LibraryRequest::Read(std::string& piece) {
  const BodyOperations operations{
      [this] { return CountBytes(); },
      [this](std::size_t wanted, std::string& bytes) { return ReadBytes(wanted, bytes); }};
  return ReadPiece(operations, State::kPiece, piece);
}

bool LibraryRequest::HasConnectedAnew() const { return state_->connected_anew; }

}  // namespace platform::win32
