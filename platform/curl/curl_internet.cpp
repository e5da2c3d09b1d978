#include "platform/curl/curl_internet.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/curl/address.h"

namespace platform::curl {
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

CurlInternet::CurlInternet(MessageLoop& loop, TextConversion& conversion, InternetSettings settings)
    : loop_(loop), conversion_(conversion), settings_(std::move(settings)) {}

CurlInternet::~CurlInternet() = default;

InternetHandle CurlInternet::Keep(Node node) {
  const InternetHandle handle{++last_handle_};
  nodes_.emplace(handle, std::move(node));
  return handle;
}

CurlInternet::Node* CurlInternet::Find(InternetHandle handle, Kind kind) {
  const auto found = nodes_.find(handle);
  return found != nodes_.end() && found->second.kind == kind ? &found->second : nullptr;
}

InternetHandle CurlInternet::InternetOpenW(const Text& agent, std::uint32_t access_type) {
  if (access_type != kInternetOpenTypeDirect) return InternetHandle::kNone;
  Node session;
  session.wait_limit = settings_.whole_limit;
  session.agent = conversion_.WideCharToMultiByte(CodePage::kAnsi, agent);
  if (HoldsLineEndOrNul(session.agent)) return InternetHandle::kNone;
  return Keep(std::move(session));
}

bool CurlInternet::SetWaitLimit(InternetHandle session, std::uint32_t limit) {
  Node* node = Find(session, Kind::kSession);
  if (!node || limit == 0) return false;
  node->wait_limit = std::min(settings_.whole_limit, milliseconds(limit));
  return true;
}

InternetHandle CurlInternet::InternetConnectW(InternetHandle session, const Text& host, std::uint16_t port,
                                              std::uint32_t service) {
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

InternetHandle CurlInternet::HttpOpenRequestW(InternetHandle connection, const Text& verb, const Text& path,
                                              const Text& version, std::uint32_t flags) {
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

bool CurlInternet::HttpSendRequestW(InternetHandle request, const Text& headers) {
  last_failure_ = InternetFailure::kOther;
  Node* node = Find(request, Kind::kRequest);
  return node && Send(*node, headers);
}

InternetHandle CurlInternet::InternetOpenUrlW(InternetHandle session, const Text& url, const Text& headers,
                                              std::uint32_t flags) {
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

bool CurlInternet::Send(Node& request, const Text& headers) {
  TransferOptions options;
  options.address = request.address;
  options.agent = request.agent;
  options.header_lines = HeaderLines(conversion_.WideCharToMultiByte(CodePage::kAnsi, headers));
  if ((request.flags & kInternetFlagReload) != 0)
    options.header_lines.emplace_back("Cache-Control: no-cache");
  options.trusted_certificates = settings_.trusted_certificates;
  options.connect_limit = std::min(settings_.connect_limit, request.wait_limit);
  request.transfer = std::make_unique<Transfer>(options);
  last_failure_ = AwaitAnswer(*request.transfer, request.wait_limit);
  if (last_failure_ == InternetFailure::kNone) return true;
  request.transfer.reset();
  return false;
}

InternetFailure CurlInternet::AwaitAnswer(Transfer& transfer, milliseconds limit) {
  const Clock::time_point deadline = Clock::now() + limit;
  while (!transfer.IsAnswered()) {
    if (transfer.HasEnded()) return transfer.Failure();
    const bool is_silent = transfer.AnswerOwedFor().value_or(milliseconds(0)) >= settings_.answer_limit;
    if (is_silent || Clock::now() >= deadline) return InternetFailure::kNoAnswer;
    transfer.Work(kPaintSlice);
    loop_.ProcessPaintMessages();
    if (loop_.InputEndsWait()) return InternetFailure::kGivenUp;
  }
  return InternetFailure::kNone;
}

bool CurlInternet::HttpQueryInfoW(InternetHandle request, std::uint32_t info_level,
                                  std::span<std::byte> buffer, std::uint32_t& size) {
  const Node* node = Find(request, Kind::kRequest);
  if (!node || !node->transfer) return false;
  const AnswerHeader& header = node->transfer->Header();
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

InternetRead CurlInternet::InternetReadFile(InternetHandle request, std::span<std::byte> buffer) {
  Node* node = Find(request, Kind::kRequest);
  if (!node || !node->transfer) return {};
  Transfer& transfer = *node->transfer;
  const std::size_t wanted = std::min(buffer.size(), Transfer::kBufferLimit / 2);
  const Clock::time_point deadline = Clock::now() + settings_.read_slice;
  while (transfer.Buffered() < wanted) {
    if (transfer.HasEnded() && transfer.Buffered() > 0) break;
    const milliseconds left = Until(deadline);
    // Checks the network before deciding, so that a program that was itself held up does not take the server
    // for silent.
    transfer.Work(left);
    const bool is_quiet = transfer.QuietFor() >= settings_.quiet_before_short_read;
    if (transfer.Buffered() > 0 && is_quiet) break;
    if (left == milliseconds(0) && transfer.Buffered() < wanted) {
      const bool is_over = transfer.HasEnded() && transfer.Buffered() == 0;
      return {!transfer.HasFailed(), 0, is_over};
    }
  }
  return {true, transfer.Take(buffer)};
}

bool CurlInternet::InternetCloseHandle(InternetHandle handle) { return nodes_.erase(handle) == 1; }

}  // namespace platform::curl
