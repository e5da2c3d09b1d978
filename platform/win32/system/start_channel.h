#pragma once
// The connection from a later start of the program to the one that runs: a window that nobody sees, to which
// the later one sends its request. Not for deciding which of them may run
// (platform/win32/system/single_start.h).

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include "platform/win32/base/handles.h"
#include "ports/start_requests.h"

namespace platform::win32 {

/// The running start's end. Requests come with the messages of the thread that creates the object, and
/// Arrived is called inside them; while nobody has set it, they are refused. What is not a message of this
/// program is refused.
class StartListener final : public StartRequests {
 public:
  static constexpr std::size_t kLongestRequest = 65536;

  /// `name` distinguishes the copies of the program that may run beside each other.
  explicit StartListener(const std::wstring& name);
  ~StartListener() override;
  StartListener(const StartListener&) = delete;
  StartListener& operator=(const StartListener&) = delete;

  [[nodiscard]] int Descriptor() const override { return -1; }
  std::optional<StartRequest> Next() override;
  void Accept() override { is_accepted_ = true; }

  /// Whether the request, whose bytes have just arrived, was accepted. For the window only.
  bool Take(std::string argument);

 private:
  HWND window_ = nullptr;
  std::optional<StartRequest> pending_;
  bool is_accepted_ = false;
};

/// The later start's end: asks the start that listens under `name`, allows it to bring its window to the
/// front, and waits for the answer, at most for `limit`. Whether the request was accepted: it was not when
/// nobody listens, or nobody answered in time.
bool AskRunningStart(const std::wstring& name, const StartRequest& request, std::chrono::milliseconds limit);

}  // namespace platform::win32
