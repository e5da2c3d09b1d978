#include "platform/win32/internet/request_thread.h"

#include "platform/win32/base/windows_api.h"

#include <wininet.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>
#include <vector>

#include "platform/http/address.h"
#include "platform/win32/base/detached_thread.h"
#include "platform/win32/internet/library_request.h"
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

/// Of all programs' usual two or six to one server; a station is read for its sound, its titles and its
/// recordings at the same time.
constexpr DWORD kConnectionsPerServer = 2 * kMostRequests;
/// A connection that is used again may have been closed by the server meanwhile; a new one has not.
constexpr int kTriesPerHop = 4;

/// What a request occupies among all; null when there are too many.
std::shared_ptr<void> TakePlace() {
  static std::atomic<int> taken = 0;
  if (++taken <= kMostRequests) return {&taken, [](std::atomic<int>* count) { --*count; }};
  --taken;
  return nullptr;
}

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

class Request {
 public:
  Request(const http::ExchangeOptions& options, std::shared_ptr<Reading> reading, std::shared_ptr<void> place)
      : options_(options), reading_(std::move(reading)), place_(std::move(place)) {}

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
    if (HostName(parts.host).empty()) return OutcomeOf(ERROR_INTERNET_NAME_NOT_RESOLVED);
    reading_->Begin();
    for (int tries = 1;; ++tries) {
      LibraryRequest request(reading_, options_, parts, place_);
      const DWORD error = request.Send(HeaderBytes(options_.header_lines, parts.user));
      if (reading_->IsCancelled()) return Outcome{InternetFailure::kGivenUp, 0};
      const bool is_answer = error == ERROR_SUCCESS && request.ReadHeader(header);
      if (!is_answer && !request.HasConnectedAnew() && tries < kTriesPerHop) continue;
      if (!is_answer) return OutcomeOf(error == ERROR_SUCCESS ? ERROR_HTTP_INVALID_SERVER_RESPONSE : error);
      if (!header.IsFinal()) return std::nullopt;
      return StrayHeader::MayBeBehind(header) ? ReadStrayHeader(request, header)
                                              : ReadBody(request, header, {});
    }
  }

  /// The next bytes of the body, as soon as there are some; empty at its end.
  Failure ReadPiece(LibraryRequest& request, std::string& piece) {
    const DWORD error = request.Read(piece);
    if (reading_->IsCancelled()) return Outcome{InternetFailure::kGivenUp, 0};
    return error == ERROR_SUCCESS ? std::nullopt : Failure(OutcomeOf(error));
  }

  Outcome ReadStrayHeader(LibraryRequest& request, const AnswerHeader& header) {
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

  Outcome ReadBody(LibraryRequest& request, const AnswerHeader& header, std::string piece) {
    reading_->Answer(header);
    const std::optional<std::uint64_t> length = header.ContentLength();
    std::uint64_t received = 0;
    bool is_over = false;
    while (!is_over) {
      if (length && received + piece.size() > *length) piece.resize(*length - received);
      received += piece.size();
      if (!reading_->Append(piece)) return Outcome{InternetFailure::kGivenUp, 0};
      if (length && received >= *length) break;
      if (const Failure failure = ReadPiece(request, piece)) return *failure;
      is_over = piece.empty();
    }
    const bool is_cut = length && received < *length;
    return is_cut ? OutcomeOf(ERROR_INTERNET_CONNECTION_ABORTED) : Outcome{InternetFailure::kNone, 0};
  }

  const http::ExchangeOptions& options_;
  const std::shared_ptr<Reading> reading_;
  const std::shared_ptr<void> place_;
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
  const std::shared_ptr<void> place = TakePlace();
  const bool started = place && StartDetached([options, reading, place] {
                         const Outcome outcome = Request(options, reading, place).Run();
                         reading->End(outcome.failure, outcome.error);
                       });
  if (!started) reading->End(InternetFailure::kOther);
}

}  // namespace platform::win32
