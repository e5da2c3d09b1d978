#pragma once
// The system's request object on a thread of its own, which calls it and keeps its messages going. Not for
// what an answer means to the program (internet/win32_xml_http_request.h).

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/win32/base/handles.h"
#include "platform/win32/internet/script_object.h"
#include "ports/text.h"

namespace platform::win32 {

/// The states of a request, as the port counts them.
enum RequestState : std::int32_t { kNotOpened, kOpened, kHeadersReceived, kBodyArriving, kCompleted };

/// What is known of the request at a moment.
struct RequestProgress {
  std::int32_t state = kNotOpened;
  bool has_body = false;  ///< completed, with `body` and `content_type`
  std::string body;
  std::string content_type;
};

/// How a call of the object went.
enum class CallResult : std::uint8_t {
  kDone,
  kFailed,
  kLate  ///< it was not waited for any longer, and the object can no longer be used
};

/// For one request: in Wine nothing but the end of its thread ends what it has begun. Every member is for the
/// owner's thread.
class RequestObject {
 public:
  using Clock = std::chrono::steady_clock;
  using Task = std::function<bool(ScriptObject&)>;
  /// The longest body with which a request completes, in bytes.
  static constexpr std::size_t kLongestBody = 1024 * 1024;
  /// A body that has not ended by then never does: how much of it has come the system's object does not say.
  static constexpr std::chrono::seconds kLongestTransfer{3};
  /// The most of these threads at a time, those included that the system holds up.
  static constexpr int kMostThreads = 32;

  /// Null when there are too many, or the system has no more of what it needs.
  static std::shared_ptr<RequestObject> Start(const Text& class_name);
  RequestObject();
  ~RequestObject();
  RequestObject(const RequestObject&) = delete;
  RequestObject& operator=(const RequestObject&) = delete;

  /// Runs a task on the thread and waits for it, at most `left`, from which the wait is taken. A task that is
  /// late ends the object, and is not begun any more unless it has been already. After the end every task
  /// fails.
  CallResult Run(const Task& task, Clock::duration& left);
  /// Sends the opened request, in the same way, and follows it.
  CallResult Send(Clock::duration& left);
  /// How far the request that was sent has come. Waits, at most `slice`, until that is something new.
  RequestProgress Progress(std::chrono::milliseconds slice);
  /// Ends the request and, as soon as the system allows it, the thread. Returns at once.
  void End();

 private:
  void EndLocked();
  void Serve(const Text& class_name);
  bool RunTasks(ScriptObject& object);
  void Look(ScriptObject& object);
  bool Judge(ScriptObject& object, RequestProgress& progress);

  HANDLE wake_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void(ScriptObject&)>> tasks_;
  bool ending_ = false;
  bool has_news_ = false;
  RequestProgress progress_;
  // Of the thread alone: since when it follows the request.
  std::optional<Clock::time_point> sent_;
};

}  // namespace platform::win32
