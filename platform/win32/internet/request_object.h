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

/// For one request: in Wine nothing but the end of its thread ends what it has begun. Every member is for the
/// owner's thread.
class RequestObject {
 public:
  using Task = std::function<bool(ScriptObject&)>;
  /// How long Run waits for its task.
  static constexpr std::chrono::seconds kLongestCall{2};
  /// The longest body with which a request completes, in bytes.
  static constexpr std::size_t kLongestBody = 1024 * 1024;
  /// A body that has not ended by then never does: how much of it has come the system's object does not say.
  static constexpr std::chrono::seconds kLongestTransfer{3};
  /// The most of these threads at a time, those included that the system holds up.
  static constexpr int kMostThreads = 32;

  /// Null when there are too many.
  static std::shared_ptr<RequestObject> Start(const Text& class_name);
  RequestObject();
  ~RequestObject();
  RequestObject(const RequestObject&) = delete;
  RequestObject& operator=(const RequestObject&) = delete;

  /// Runs a task on the thread; its result, or false when it is late.
  bool Run(const Task& task);
  /// Sends the opened request and follows it; false when sending fails.
  bool Send();
  /// How far the request that was sent has come. Waits, at most `slice`, until that is something new.
  RequestProgress Progress(std::chrono::milliseconds slice);
  /// Ends the request and, as soon as the system allows it, the thread. Returns at once.
  void End();

 private:
  using Clock = std::chrono::steady_clock;
  void Post(std::function<void(ScriptObject&)> task);
  void Serve(const Text& class_name);
  bool RunTasks(ScriptObject& object);
  void Look(ScriptObject& object);
  void Publish(RequestProgress progress);

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
