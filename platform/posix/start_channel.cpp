#include "platform/posix/start_channel.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <utility>

#include "platform/posix/native_names.h"

namespace platform::posix {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr char kAccepted = 'y';
/// Version, token and argument, with a NUL behind each of the first two.
constexpr std::string_view kVersion("funkhausplayer 1");

/// A socket's address has room for only about a hundred characters; through its folder's descriptor any path
/// is short enough.
class SocketAddress {
 public:
  explicit SocketAddress(const std::string& path)
      : folder_(::open(FolderOf(path).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {
    const std::string name = path.substr(path.rfind('/') + 1);
    const int size = std::snprintf(address_.sun_path, sizeof(address_.sun_path), "/proc/self/fd/%d/%s",
                                   folder_.Get(), name.c_str());
    usable_ = folder_.IsOpen() && size > 0 && static_cast<std::size_t>(size) < sizeof(address_.sun_path);
    address_.sun_family = AF_UNIX;
  }
  [[nodiscard]] bool Bind(int socket) const {
    return usable_ && ::bind(socket, Generic(), sizeof(address_)) == 0;
  }
  [[nodiscard]] bool Connect(int socket) const {
    return usable_ && ::connect(socket, Generic(), sizeof(address_)) == 0;
  }

 private:
  [[nodiscard]] const sockaddr* Generic() const { return reinterpret_cast<const sockaddr*>(&address_); }

  FileDescriptor folder_;
  sockaddr_un address_{};
  bool usable_ = false;
};

FileDescriptor MakeSocket() {
  return FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

std::string Encode(const StartRequest& request) {
  std::string message(kVersion);
  message += '\0';
  message += request.activation_token;
  message += '\0';
  return message + request.argument;
}

/// The text before the next NUL, which is removed with it.
std::optional<std::string> NextField(std::string_view& rest) {
  const auto end = rest.find('\0');
  if (end == std::string_view::npos) return std::nullopt;
  std::string field(rest.substr(0, end));
  rest.remove_prefix(end + 1);
  return field;
}

std::optional<StartRequest> RequestOf(std::string_view message) {
  if (NextField(message) != kVersion) return std::nullopt;
  auto token = NextField(message);
  if (!token || message.find('\0') != std::string_view::npos) return std::nullopt;
  return StartRequest{*std::move(token), std::string(message)};
}

std::optional<StartRequest> ReadRequest(int socket) {
  std::string message(StartListener::kLongestRequest, '\0');
  const ssize_t size = ::recv(socket, message.data(), message.size(), MSG_TRUNC);
  if (size <= 0 || static_cast<std::size_t>(size) > message.size()) return std::nullopt;
  message.resize(static_cast<std::size_t>(size));
  return RequestOf(message);
}

AskResult ReadAnswer(int socket, milliseconds limit) {
  const auto deadline = Clock::now() + limit;
  while (true) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    if (left <= milliseconds(0)) return AskResult::kSilent;
    pollfd ready{socket, POLLIN, 0};
    if (::poll(&ready, 1, static_cast<int>(left.count())) <= 0) continue;
    char answer = 0;
    return ::recv(socket, &answer, 1, 0) == 1 && answer == kAccepted ? AskResult::kAccepted
                                                                     : AskResult::kRefused;
  }
}

}  // namespace

StartListener::StartListener(const std::string& path) : path_(path) {
  constexpr mode_t kOwnerOnly = 0600;
  ::unlink(path_.c_str());
  FileDescriptor socket = MakeSocket();
  if (!socket.IsOpen() || !SocketAddress(path_).Bind(socket.Get())) return;
  if (::chmod(path_.c_str(), kOwnerOnly) != 0 || ::listen(socket.Get(), int{kMostWaiting}) != 0) return;
  FileDescriptor ready(::epoll_create1(EPOLL_CLOEXEC));
  if (!ready.IsOpen()) return;
  listener_ = std::move(socket);
  ready_ = std::move(ready);
  if (!Watch(listener_.Get())) ready_.Close();
}

StartListener::~StartListener() {
  if (listener_.IsOpen()) ::unlink(path_.c_str());
}

bool StartListener::Watch(int file) const {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.fd = file;
  return ::epoll_ctl(ready_.Get(), EPOLL_CTL_ADD, file, &event) == 0;
}

std::optional<StartRequest> StartListener::Next() {
  current_.Close();
  epoll_event event{};
  while (ready_.IsOpen() && ::epoll_wait(ready_.Get(), &event, 1, 0) == 1) {
    if (event.data.fd == listener_.Get()) {
      if (!TakeWaiting()) break;
      continue;
    }
    current_ = Take(event.data.fd);
    if (auto request = ReadRequest(current_.Get())) return request;
    current_.Close();
  }
  return std::nullopt;
}

bool StartListener::TakeWaiting() {
  FileDescriptor next(::accept4(listener_.Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (!next.IsOpen() || !Watch(next.Get())) return false;
  if (waiting_.size() == kMostWaiting) waiting_.erase(waiting_.begin());
  waiting_.push_back(std::move(next));
  return true;
}

FileDescriptor StartListener::Take(int number) {
  const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                  [number](const FileDescriptor& file) { return file.Get() == number; });
  FileDescriptor taken = std::move(*found);
  waiting_.erase(found);
  return taken;
}

void StartListener::Accept() {
  if (current_.IsOpen()) ::send(current_.Get(), &kAccepted, 1, MSG_NOSIGNAL);
  current_.Close();
}

AskResult AskRunningStart(const std::string& path, const StartRequest& request, milliseconds limit) {
  const FileDescriptor socket = MakeSocket();
  if (!socket.IsOpen() || !SocketAddress(path).Connect(socket.Get())) return AskResult::kRefused;
  const std::string message = Encode(request);
  const ssize_t sent = ::send(socket.Get(), message.data(), message.size(), MSG_NOSIGNAL);
  if (sent != static_cast<ssize_t>(message.size())) return AskResult::kRefused;
  return ReadAnswer(socket.Get(), limit);
}

}  // namespace platform::posix
