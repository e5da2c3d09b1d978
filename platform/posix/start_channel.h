#pragma once
// The connection from a later start of the program to the one that runs: a socket on which the later one asks
// and the running one answers. Not for deciding which of them may run (platform/posix/start_lock.h).

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "platform/posix/file_descriptor.h"
#include "ports/start_requests.h"

namespace platform::posix {

/// The running start's end. A message is one packet of at most kLongestRequest bytes; what is not a message
/// of this program is refused.
class StartListener final : public StartRequests {
 public:
  static constexpr std::size_t kLongestRequest = 65536;
  /// How many starts may wait at the same time; beyond that, the longest waiting are refused.
  static constexpr std::size_t kMostWaiting = 16;

  /// `path` names the socket and replaces what a former start left there. Only the start that holds the lock
  /// may create it. When the socket cannot be made, nobody can ask.
  explicit StartListener(const std::string& path);
  ~StartListener() override;
  StartListener(const StartListener&) = delete;
  StartListener& operator=(const StartListener&) = delete;

  [[nodiscard]] int Descriptor() const override { return ready_.IsOpen() ? ready_.Get() : -1; }
  std::optional<StartRequest> Next() override;
  void Accept() override;

 private:
  bool TakeWaiting();
  FileDescriptor Take(int number);
  [[nodiscard]] bool Watch(int file) const;

  std::string path_;
  FileDescriptor listener_;
  FileDescriptor ready_;                 ///< readable when one of the others is
  std::vector<FileDescriptor> waiting_;  ///< connected, their message not read yet
  FileDescriptor current_;               ///< the one whose request Next gave last
};

enum class AskResult {
  kAccepted,
  kRefused,  ///< nobody listens, or the request was refused, or the listener ended
  kSilent,   ///< no answer within the limit
};

/// The later start's end: asks the start that listens at `path` and waits for the answer, at most for
/// `limit`.
AskResult AskRunningStart(const std::string& path, const StartRequest& request,
                          std::chrono::milliseconds limit);

}  // namespace platform::posix
