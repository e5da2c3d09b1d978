#include "platform/win32/internet/request_object.h"

#include "platform/win32/base/windows_api.h"

#include <objbase.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

#include "platform/http/answer_header.h"
#include "platform/http/live_answer.h"
#include "platform/win32/base/detached_thread.h"

namespace platform::win32 {
namespace {

/// How often the thread looks at a request.
constexpr DWORD kLookMilliseconds = 5;

std::atomic<int> object_threads = 0;

template <typename Value>
Value ValueOr(const std::optional<ScriptValue>& value, Value otherwise) {
  const Value* const found = value ? std::get_if<Value>(&*value) : nullptr;
  return found == nullptr ? otherwise : *found;
}

/// As bytes; what is not ASCII is of no use here, and must not become a line end.
std::string Ascii(TextView text) {
  std::string bytes;
  for (const char16_t unit : text) bytes += unit < 0x80 ? static_cast<char>(unit) : '?';
  return bytes;
}

/// The header of the final answer, empty while there is none; nothing when it is too long.
std::optional<http::AnswerHeader> HeaderOf(ScriptObject& object) {
  const std::string lines = Ascii(ValueOr(object.Call(u"getAllResponseHeaders"), Text()));
  http::AnswerHeader header;
  if (lines.empty()) return header;
  header.AddLine("HTTP/1.1 200 OK\r\n");
  for (std::size_t at = 0; at < lines.size();) {
    const std::size_t next = std::min(lines.find('\n', at), lines.size() - 1) + 1;
    const std::string line = lines.substr(at, next - at);
    if (!header.AddLine(line)) return std::nullopt;
    at = next;
  }
  return header;
}

void KeepMessagesGoing() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::DispatchMessageW(&message);
  }
}

}  // namespace

std::shared_ptr<RequestObject> RequestObject::Start(const Text& class_name) {
  auto object = std::make_shared<RequestObject>();
  if (object->wake_ == nullptr) return nullptr;
  const bool started = ++object_threads <= kMostThreads && StartDetached([object, class_name] {
    object->Serve(class_name);
    --object_threads;
  });
  if (started) return object;
  --object_threads;
  return nullptr;
}

RequestObject::RequestObject() : wake_(::CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

RequestObject::~RequestObject() {
  if (wake_ != nullptr) ::CloseHandle(wake_);
}

CallResult RequestObject::Run(const Task& task, Clock::duration& left) {
  // The task may still run when nobody waits for it any more.
  const auto result = std::make_shared<std::optional<bool>>();
  const Clock::time_point start = Clock::now();
  std::unique_lock lock(mutex_);
  tasks_.push_back([this, task, result](ScriptObject& object) {
    const bool done = task(object);
    const std::lock_guard task_lock(mutex_);
    *result = done;
    changed_.notify_all();
  });
  ::SetEvent(wake_);
  const bool is_over =
      changed_.wait_for(lock, left, [this, &result] { return result->has_value() || ending_; });
  left = std::max(left - (Clock::now() - start), Clock::duration::zero());
  if (!is_over) EndLocked();
  if (!is_over) return CallResult::kLate;
  return result->value_or(false) ? CallResult::kDone : CallResult::kFailed;
}

CallResult RequestObject::Send(Clock::duration& left) {
  const Task send = [this](ScriptObject& object) {
    sent_ = Clock::now();
    return object.Call(u"send").has_value();
  };
  return Run(send, left);
}

RequestProgress RequestObject::Progress(std::chrono::milliseconds slice) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, slice, [this] { return has_news_; });
  has_news_ = false;
  return progress_;
}

void RequestObject::EndLocked() {
  ending_ = true;
  ::SetEvent(wake_);
}

void RequestObject::End() {
  const std::lock_guard lock(mutex_);
  EndLocked();
}

void RequestObject::Serve(const Text& class_name) {
  const bool has_com = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  {
    ScriptObject object(class_name);
    while (RunTasks(object)) {
      if (sent_) Look(object);
      ::MsgWaitForMultipleObjectsEx(1, &wake_, sent_ ? kLookMilliseconds : INFINITE, QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
      KeepMessagesGoing();
    }
    object.Call(u"abort");
  }
  if (has_com) ::CoUninitialize();
}

bool RequestObject::RunTasks(ScriptObject& object) {
  while (true) {
    std::function<void(ScriptObject&)> task;
    {
      const std::lock_guard lock(mutex_);
      if (ending_) return false;
      if (tasks_.empty()) return true;
      task = std::move(tasks_.front());
      tasks_.pop_front();
    }
    task(object);
  }
}

void RequestObject::Look(ScriptObject& object) {
  RequestProgress progress;
  progress.state = ValueOr(object.Get(u"readyState"), std::int32_t{0});
  bool is_over = false;
  if (progress.state >= kHeadersReceived) is_over = Judge(object, progress);
  const std::lock_guard lock(mutex_);
  has_news_ = has_news_ || progress.state != progress_.state;
  progress_ = std::move(progress);
  if (is_over) EndLocked();
  changed_.notify_all();
}

// Whether the request is over, with its body when that has come.
bool RequestObject::Judge(ScriptObject& object, RequestProgress& progress) {
  const bool is_complete = progress.state == kCompleted;
  const std::optional<http::AnswerHeader> header = HeaderOf(object);
  const bool is_live = header && http::IsLiveAnswer(*header);
  if (!header || is_live) progress.state = kCompleted;
  if (!header || is_live) return true;
  // In Wine the state comes before the headers.
  if (!is_complete && header->Block().empty()) progress.state = kOpened;
  const std::optional<std::uint64_t> length = header->ContentLength();
  if (is_complete) {
    progress.body = ValueOr(object.Get(u"responseBody"), std::string());
    progress.content_type = header->Value("Content-Type");
    // What has been unpacked has another length than what was sent.
    const bool is_packed = header->HasNameBeginning("Content-Encoding:");
    progress.has_body = is_packed || progress.body.size() >= length.value_or(0);
  }
  const bool is_too_long = length > kLongestBody || progress.body.size() > kLongestBody ||
                           Clock::now() - *sent_ > kLongestTransfer;
  if (is_too_long) progress = {kBodyArriving, false, {}, {}};
  return is_complete || is_too_long;
}

}  // namespace platform::win32
