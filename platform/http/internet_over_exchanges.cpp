#include "platform/http/internet_over_exchanges.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/http/address.h"

namespace platform::http {
namespace {

using Clock = std::chrono::steady_clock;

constexpr milliseconds kPaintSlice{10};

bool HoldsLineEndOrNul(const std::string& bytes) {
  return bytes.find_first_of(std::string_view("\r\n\0", 3)) != std::string::npos;
}

// The lines of a header text, without their line ends and without empty ones.
std::vector<std::string> HeaderLines(const std::string& bytes) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = std::min(bytes.find_first_of(std::string_view("\r\n\0", 3), at), bytes.size());
    if (end > at) lines.push_back(bytes.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

milliseconds Until(Clock::time_point deadline) {
  return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(deadline - Clock::now()));
}

}  // namespace

InternetOverExchanges::InternetOverExchanges(MessageLoop& loop, TextConversion& conversion,
                                             const InternetSettings& settings, MakeExchange make_exchange)
    : loop_(loop), conversion_(conversion), settings_(settings), make_exchange_(std::move(make_exchange)) {}

InternetOverExchanges::~InternetOverExchanges() = default;

InternetHandle InternetOverExchanges::Keep(Node node) {
  const InternetHandle handle{++last_handle_};
  nodes_.emplace(handle, std::move(node));
  return handle;
}

InternetOverExchanges::Node* InternetOverExchanges::Find(InternetHandle handle, Kind kind) {
  const auto found = nodes_.find(handle);
  return found != nodes_.end() && found->second.kind == kind ? &found->second : nullptr;
}

InternetHandle InternetOverExchanges::InternetOpenW(const Text& agent, std::uint32_t access_type) {
  if (access_type != kInternetOpenTypeDirect) return InternetHandle::kNone;
  Node session;
  session.wait_limit = settings_.whole_limit;
  session.agent = conversion_.WideCharToMultiByte(CodePage::kAnsi, agent);
  if (HoldsLineEndOrNul(session.agent)) return InternetHandle::kNone;
  return Keep(std::move(session));
}

bool InternetOverExchanges::SetWaitLimit(InternetHandle session, std::uint32_t limit) {
  Node* node = Find(session, Kind::kSession);
  if (!node || limit == 0) return false;
  node->wait_limit = std::min(settings_.whole_limit, milliseconds(limit));
  return true;
}

InternetHandle InternetOverExchanges::InternetConnectW(InternetHandle session, const Text& host,
                                                       std::uint16_t port, std::uint32_t service) {
  const Node* parent = Find(session, Kind::kSession);
  if (!parent || host.empty() || service != kInternetServiceHttp) return InternetHandle::kNone;
  Node connection;
  connection.kind = Kind::kConnection;
  connection.agent = parent->agent;
  connection.wait_limit = parent->wait_limit;
  connection.host = host;
  connection.port = port;
  return Keep(std::move(connection));
}

InternetHandle InternetOverExchanges::HttpOpenRequestW(InternetHandle connection, const Text& verb,
                                                       const Text& path, const Text& version,
                                                       std::uint32_t flags) {
  const Node* parent = Find(connection, Kind::kConnection);
  if (!parent || verb != u"GET" || version != u"HTTP/1.1") return InternetHandle::kNone;
  const Security security = (flags & kInternetFlagSecure) != 0 ? Security::kTls : Security::kPlain;
  auto address = RequestAddress(conversion_, parent->host, parent->port, path, security);
  if (!address) return InternetHandle::kNone;
  Node request;
  request.kind = Kind::kRequest;
  request.agent = parent->agent;
  request.wait_limit = parent->wait_limit;
  request.address = std::move(*address);
  request.flags = flags;
  return Keep(std::move(request));
}

bool InternetOverExchanges::HttpSendRequestW(InternetHandle request, const Text& headers) {
  last_failure_ = InternetFailure::kOther;
  Node* node = Find(request, Kind::kRequest);
  return node && Send(*node, headers);
}

InternetHandle InternetOverExchanges::InternetOpenUrlW(InternetHandle session, const Text& url,
                                                       const Text& headers, std::uint32_t flags) {
  last_failure_ = InternetFailure::kOther;
  const Node* parent = Find(session, Kind::kSession);
  auto address = RequestAddress(conversion_, url);
  if (!parent || !address) return InternetHandle::kNone;
  Node request;
  request.kind = Kind::kRequest;
  request.agent = parent->agent;
  request.wait_limit = parent->wait_limit;
  request.address = std::move(*address);
  request.flags = flags;
  if (!Send(request, headers)) return InternetHandle::kNone;
  return Keep(std::move(request));
}

bool InternetOverExchanges::Send(Node& request, const Text& headers) {
  ExchangeOptions options;
  options.address = request.address;
  options.agent = request.agent;
  options.header_lines = HeaderLines(conversion_.WideCharToMultiByte(CodePage::kAnsi, headers));
  if ((request.flags & kInternetFlagReload) != 0)
    options.header_lines.emplace_back("Cache-Control: no-cache");
  options.connect_limit = std::min(settings_.connect_limit, request.wait_limit);
  request.exchange = make_exchange_(options);
  last_failure_ = AwaitAnswer(*request.exchange, request.wait_limit);
  if (last_failure_ == InternetFailure::kNone) return true;
  request.exchange.reset();
  return false;
}

InternetFailure InternetOverExchanges::AwaitAnswer(Exchange& exchange, milliseconds limit) {
  const Clock::time_point deadline = Clock::now() + limit;
  while (!exchange.IsAnswered()) {
    if (exchange.HasEnded()) return exchange.Failure();
    const bool is_silent = exchange.AnswerOwedFor().value_or(milliseconds(0)) >= settings_.answer_limit;
    if (is_silent || Clock::now() >= deadline) return InternetFailure::kNoAnswer;
    exchange.Work(kPaintSlice);
    loop_.ProcessPaintMessages();
    if (loop_.InputEndsWait()) return InternetFailure::kGivenUp;
  }
  return InternetFailure::kNone;
}

bool InternetOverExchanges::HttpQueryInfoW(InternetHandle request, std::uint32_t info_level,
                                           std::span<std::byte> buffer, std::uint32_t& size) {
  const Node* node = Find(request, Kind::kRequest);
  if (!node || !node->exchange) return false;
  const AnswerHeader& header = node->exchange->Header();
  Text text;
  if (info_level == kHttpQueryStatusCode) {
    text = conversion_.MultiByteToWideChar(CodePage::kAnsi, header.StatusCode());
  } else if (info_level == kHttpQueryRawHeadersCrLf) {
    text = conversion_.MultiByteToWideChar(CodePage::kAnsi, header.Block());
  }
  size = static_cast<std::uint32_t>(text.size() * sizeof(char16_t));
  if (text.empty() || buffer.size() < size) return false;
  std::memcpy(buffer.data(), text.data(), size);
  return true;
}

InternetRead InternetOverExchanges::InternetReadFile(InternetHandle request, std::span<std::byte> buffer) {
  Node* node = Find(request, Kind::kRequest);
  if (!node || !node->exchange) return {};
  Exchange& exchange = *node->exchange;
  const std::size_t wanted = std::min(buffer.size(), Exchange::kBufferLimit / 2);
  const Clock::time_point deadline = Clock::now() + settings_.read_slice;
  while (exchange.Buffered() < wanted) {
    if (exchange.HasEnded() && exchange.Buffered() > 0) break;
    const milliseconds left = Until(deadline);
    // Checks the network before deciding, so that a program that was itself held up does not take the server
    // for silent.
    exchange.Work(left);
    const bool is_quiet = exchange.QuietFor() >= settings_.quiet_before_short_read;
    if (exchange.Buffered() > 0 && is_quiet) break;
    if (left == milliseconds(0) && exchange.Buffered() < wanted) {
      const bool is_over = exchange.HasEnded() && exchange.Buffered() == 0;
      return {!exchange.HasFailed(), 0, is_over};
    }
  }
  return {true, exchange.Take(buffer)};
}

bool InternetOverExchanges::InternetCloseHandle(InternetHandle handle) { return nodes_.erase(handle) == 1; }

}  // namespace platform::http
