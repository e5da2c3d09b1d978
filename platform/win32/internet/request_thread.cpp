#include "platform/win32/internet/request_thread.h"

#include "platform/win32/base/windows_api.h"

#include <wininet.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/http/address.h"
#include "platform/win32/base/wide.h"
#include "platform/win32/internet/request_texts.h"
#include "platform/win32/internet/stray_header.h"

namespace platform::win32 {
namespace {

using http::AddressParts;
using http::AnswerHeader;

/// How a request ended.
struct Outcome {
  InternetFailure failure = InternetFailure::kOther;
  DWORD error = 0;
};
/// Nothing while the request continues.
using Failure = std::optional<Outcome>;

constexpr DWORD kFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_COOKIES |
                         INTERNET_FLAG_NO_UI | INTERNET_FLAG_NO_AUTH | INTERNET_FLAG_NO_AUTO_REDIRECT;
constexpr DWORD kPiece = 16 * 1024;
/// Of all programs' usual two or six to one server; a station is read for its sound, its titles and its
/// recordings at the same time.
constexpr DWORD kConnectionsPerServer = 2 * kMostRequestThreads;
/// A connection that is used again may have been closed by the server meanwhile; a new one has not.
constexpr int kTriesPerHop = 4;

std::atomic<int> threads = 0;

InternetFailure KindOf(DWORD error) {
  switch (error) {
    case ERROR_INTERNET_TIMEOUT:
      return InternetFailure::kNoAnswer;
    case ERROR_INTERNET_NAME_NOT_RESOLVED:
      return InternetFailure::kUnknownHost;
    case ERROR_INTERNET_CANNOT_CONNECT:
      return InternetFailure::kRefused;
    default:
      return InternetFailure::kOther;
  }
}

Outcome OutcomeOf(DWORD error) { return {KindOf(error), error}; }

/// The handles of one hop. They are lent to the reading while the library waits on them.
class Hop {
 public:
  Hop(Reading& reading, const http::ExchangeOptions& options, const AddressParts& parts)
      : reading_(reading), lent_(true) {
    const Text agent = FromAnsi(options.agent);
    handles_.session = ::InternetOpenW(Wide(agent), INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
    if (handles_.session == nullptr) return;
    SetLimits(options);
    const Text host = HostName(parts.host);
    handles_.connection = ::InternetConnectW(handles_.session, Wide(host), parts.port, nullptr, nullptr,
                                             INTERNET_SERVICE_HTTP, 0, 0);
    if (handles_.connection == nullptr) return;
    const Text target(parts.target.begin(), parts.target.end());
    const DWORD secure = parts.security == http::Security::kTls ? INTERNET_FLAG_SECURE : 0;
    handles_.request = ::HttpOpenRequestW(handles_.connection, L"GET", Wide(target), L"HTTP/1.1", nullptr,
                                          nullptr, kFlags | secure, reinterpret_cast<DWORD_PTR>(this));
    if (handles_.request == nullptr) return;
    ::InternetSetStatusCallbackW(handles_.request, &Hop::OnStatus);
    lent_ = reading_.Lend(handles_);
  }
  ~Hop() {
    if (handles_.request != nullptr && !reading_.TakeBack() && lent_) return;
    // Nothing of a handle that is being closed is to reach this object.
    if (handles_.request != nullptr) ::InternetSetStatusCallbackW(handles_.request, nullptr);
    for (void* const handle : {handles_.request, handles_.connection, handles_.session}) {
      if (handle != nullptr) ::InternetCloseHandle(handle);
    }
  }
  Hop(const Hop&) = delete;
  Hop& operator=(const Hop&) = delete;

  [[nodiscard]] bool IsOpen() const { return handles_.request != nullptr && lent_; }
  [[nodiscard]] void* Request() const { return handles_.request; }
  /// No connection of an earlier request was used, as far as it came to one.
  [[nodiscard]] bool HasConnectedAnew() const { return connected_anew_; }

 private:
  void SetLimits(const http::ExchangeOptions& options) {
    const auto set = [this](DWORD option, DWORD value) {
      ::InternetSetOptionW(handles_.session, option, &value, sizeof value);
    };
    set(INTERNET_OPTION_CONNECT_TIMEOUT, static_cast<DWORD>(options.connect_limit.count()));
    set(INTERNET_OPTION_CONNECT_RETRIES, 1);
    // How long a silent server is waited for is up to whoever asks for its bytes.
    set(INTERNET_OPTION_RECEIVE_TIMEOUT, INFINITE);
    set(INTERNET_OPTION_DATA_RECEIVE_TIMEOUT, INFINITE);
    set(INTERNET_OPTION_IGNORE_OFFLINE, TRUE);
  }

  // Called by the library inside its own operations, on the thread that called those; when a handle is closed
  // elsewhere also there, with a status that is of no interest.
  static void CALLBACK OnStatus(HINTERNET /*handle*/, DWORD_PTR context, DWORD status, void* /*information*/,
                                DWORD /*length*/) {
    const bool is_new =
        status == INTERNET_STATUS_RESOLVING_NAME || status == INTERNET_STATUS_CONNECTING_TO_SERVER;
    if (!is_new && status != INTERNET_STATUS_REQUEST_SENT) return;
    Hop& hop = *reinterpret_cast<Hop*>(context);
    if (is_new) hop.connected_anew_ = true;
    if (!is_new) hop.reading_.Sent();
  }

  Reading& reading_;
  Reading::Handles handles_;
  bool lent_;
  bool connected_anew_ = false;
};

/// The header block as the library has it; false when there is none or it is too long.
bool ReadHeader(void* request, AnswerHeader& header) {
  DWORD size = 0;
  ::HttpQueryInfoA(request, HTTP_QUERY_RAW_HEADERS_CRLF, nullptr, &size, nullptr);
  std::string block(size, '\0');
  if (size == 0 || !::HttpQueryInfoA(request, HTTP_QUERY_RAW_HEADERS_CRLF, block.data(), &size, nullptr))
    return false;
  block.resize(size);
  for (std::size_t at = 0; at < block.size();) {
    const std::size_t next = std::min(block.find('\n', at), block.size() - 1) + 1;
    const std::string_view line = std::string_view(block).substr(at, next - at);
    if (line == "\r\n" || line == "\n") break;
    if (!header.AddLine(line)) return false;
    at = next;
  }
  return header.AddLine("\r\n") && !header.StatusCode().empty();
}

class Request {
 public:
  Request(const http::ExchangeOptions& options, Reading& reading) : options_(options), reading_(reading) {}

  Outcome Run() {
    std::string address = options_.address;
    for (int redirects = 0; redirects <= http::Exchange::kMostRedirects; ++redirects) {
      const auto parts = http::PartsOf(address);
      if (!parts) return OutcomeOf(ERROR_INTERNET_INVALID_URL);
      AnswerHeader header;
      if (const Failure failure = RunHop(*parts, header)) return *failure;
      const std::string location = header.Value("Location");
      if (location.empty()) return OutcomeOf(ERROR_HTTP_INVALID_SERVER_RESPONSE);
      const auto next = http::ResolveReference(address, location);
      if (!next) return OutcomeOf(ERROR_INTERNET_INVALID_URL);
      address = *next;
    }
    return OutcomeOf(ERROR_HTTP_REDIRECT_FAILED);
  }

 private:
  /// Nothing after a redirect, whose header it gives back.
  Failure RunHop(const AddressParts& parts, AnswerHeader& header) {
    const Text lines = HeaderText(options_.header_lines, parts.user);
    reading_.Begin();
    for (int tries = 1;; ++tries) {
      Hop hop(reading_, options_, parts);
      if (!hop.IsOpen()) return Outcome{};
      const BOOL sent =
          ::HttpSendRequestW(hop.Request(), Wide(lines), static_cast<DWORD>(lines.size()), nullptr, 0);
      const DWORD error = ::GetLastError();
      if (reading_.IsCancelled()) return Outcome{InternetFailure::kGivenUp, 0};
      const bool is_answer = sent != FALSE && ReadHeader(hop.Request(), header);
      if (!is_answer && !hop.HasConnectedAnew() && tries < kTriesPerHop) {
        header = {};
        continue;
      }
      if (!is_answer) return OutcomeOf(sent != FALSE ? ERROR_HTTP_INVALID_SERVER_RESPONSE : error);
      if (!header.IsFinal()) return std::nullopt;
      return StrayHeader::MayBeBehind(header) ? ReadStrayHeader(hop.Request(), header)
                                              : ReadBody(hop.Request(), header, {});
    }
  }

  /// The next bytes of the body, as soon as there are some; empty at its end.
  Failure ReadPiece(void* request, std::string& piece) {
    DWORD count = 0;
    piece.clear();
    // A read waits until its piece is full, so it is asked for what is there.
    const BOOL known = ::InternetQueryDataAvailable(request, &count, 0, 0);
    if (reading_.IsCancelled()) return Outcome{InternetFailure::kGivenUp, 0};
    if (known == FALSE) return OutcomeOf(::GetLastError());
    if (count == 0) return std::nullopt;
    piece.resize(std::min(count, kPiece));
    const BOOL read = ::InternetReadFile(request, piece.data(), static_cast<DWORD>(piece.size()), &count);
    if (read == FALSE || reading_.IsCancelled()) return OutcomeOf(::GetLastError());
    piece.resize(count);
    return std::nullopt;
  }

  Outcome ReadStrayHeader(void* request, const AnswerHeader& header) {
    using State = StrayHeader::State;
    StrayHeader stray;
    std::string piece;
    State state = State::kUnknown;
    while (state == State::kUnknown) {
      if (const Failure failure = ReadPiece(request, piece)) return *failure;
      state = stray.Add(piece);
    }
    if (state == State::kTooLong || state == State::kGarbage)
      return OutcomeOf(ERROR_HTTP_INVALID_SERVER_RESPONSE);
    return ReadBody(request, state == State::kWhole ? stray.Header() : header, stray.Rest());
  }

  Outcome ReadBody(void* request, const AnswerHeader& header, std::string piece) {
    reading_.Answer(header);
    const std::optional<std::uint64_t> length = header.ContentLength();
    std::uint64_t received = 0;
    bool is_over = false;
    while (!is_over) {
      if (length && received + piece.size() > *length) piece.resize(*length - received);
      received += piece.size();
      if (!reading_.Append(piece)) return Outcome{InternetFailure::kGivenUp, 0};
      if (length && received >= *length) break;
      if (const Failure failure = ReadPiece(request, piece)) return *failure;
      is_over = piece.empty();
    }
    const bool is_cut = length && received < *length;
    return is_cut ? OutcomeOf(ERROR_INTERNET_CONNECTION_ABORTED) : Outcome{InternetFailure::kNone, 0};
  }

  const http::ExchangeOptions& options_;
  Reading& reading_;
};

void AllowManyConnections() {
  DWORD count = kConnectionsPerServer;
  ::InternetSetOptionW(nullptr, INTERNET_OPTION_MAX_CONNS_PER_SERVER, &count, sizeof count);
  ::InternetSetOptionW(nullptr, INTERNET_OPTION_MAX_CONNS_PER_1_0_SERVER, &count, sizeof count);
}

}  // namespace

void StartRequestThread(const http::ExchangeOptions& options, std::shared_ptr<Reading> reading) {
  static const bool once = [] { return AllowManyConnections(), true; }();
  static_cast<void>(once);
  const auto run = [options, reading] {
    const Outcome outcome = Request(options, *reading).Run();
    reading->End(outcome.failure, outcome.error);
    --threads;
  };
  if (++threads <= kMostRequestThreads) {
    try {
      std::thread(run).detach();
      return;
    } catch (const std::system_error&) {
      // The system has no more of them.
    }
  }
  --threads;
  reading->End(InternetFailure::kOther);
}

}  // namespace platform::win32
