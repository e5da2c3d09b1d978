#include "platform/win32/internet/request_object.h"

#include "platform/win32/base/windows_api.h"

#include <objbase.h>

#include <atomic>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/http/answer_header.h"
#include "platform/http/live_answer.h"

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

http::AnswerHeader HeaderOf(ScriptObject& object) {
  http::AnswerHeader header;
  const Text lines = ValueOr(object.Call(u"getAllResponseHeaders"), Text());
  if (lines.empty() || !header.AddLine("HTTP/1.1 200 OK\r\n")) return {};
  for (std::size_t at = 0; at < lines.size();) {
    const std::size_t end = std::min(lines.find(u'\n', at), lines.size());
    std::string line;
    for (const char16_t unit : TextView(lines).substr(at, end - at)) {
      if (unit != u'\r') line += static_cast<char>(unit);
    }
    if (!line.empty() && !header.AddLine(line + "\r\n")) return {};
    at = end + 1;
  }
  static_cast<void>(header.AddLine("\r\n"));
  return header;
}

void KeepMessagesGoing() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

}  // namespace

std::shared_ptr<RequestObject> RequestObject::Start(const Text& class_name) {
  auto object = std::make_shared<RequestObject>();
  if (++object_threads <= kMostThreads) {
    try {
      std::thread([object, class_name] {
        object->Serve(class_name);
        --object_threads;
      }).detach();
      return object;
    } catch (const std::system_error&) {
      // The system has no more of them.
    }
  }
  --object_threads;
  return nullptr;
}

RequestObject::RequestObject() : wake_(::CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

RequestObject::~RequestObject() { ::CloseHandle(wake_); }

void RequestObject::Post(std::function<void(ScriptObject&)> task) {
  const std::lock_guard lock(mutex_);
  tasks_.push_back(std::move(task));
  ::SetEvent(wake_);
}

bool RequestObject::Run(const Task& task) {
  // The task may still run when nobody waits for it any more.
  const auto result = std::make_shared<std::optional<bool>>();
  Post([this, task, result](ScriptObject& object) {
    const bool done = task(object);
    const std::lock_guard lock(mutex_);
    *result = done;
    changed_.notify_all();
  });
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, kLongestCall, [&result] { return result->has_value(); }) && **result;
}

bool RequestObject::Send() {
  return Run([this](ScriptObject& object) {
    sent_ = Clock::now();
    return object.Call(u"send").has_value();
  });
}

RequestProgress RequestObject::Progress(std::chrono::milliseconds slice) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, slice, [this] { return has_news_; });
  has_news_ = false;
  return progress_;
}

void RequestObject::End() {
  const std::lock_guard lock(mutex_);
  ending_ = true;
  ::SetEvent(wake_);
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
  bool is_over = progress.state == kCompleted;
  if (progress.state >= kHeadersReceived) {
    const http::AnswerHeader header = HeaderOf(object);
    // In Wine the state comes before the headers.
    if (!is_over && header.Block().empty()) progress.state = kOpened;
    const std::optional<std::uint64_t> length = header.ContentLength();
    const bool is_live = http::IsLiveAnswer(header);
    if (is_over && !is_live) {
      progress.body = ValueOr(object.Get(u"responseBody"), std::string());
      progress.content_type = header.Value("Content-Type");
      // What has been unpacked has another length than what was sent.
      const bool is_packed = header.HasNameBeginning("Content-Encoding:");
      progress.has_body = is_packed || progress.body.size() >= length.value_or(0);
    }
    const bool is_too_long = length > kLongestBody || progress.body.size() > kLongestBody ||
                             Clock::now() - *sent_ > kLongestTransfer;
    if (is_live) progress.state = kCompleted;
    if (is_too_long && !is_live) progress = {kBodyArriving, false, {}, {}};
    is_over = is_over || is_live || is_too_long;
  }
  Publish(std::move(progress));
  if (!is_over) return;
  const std::lock_guard lock(mutex_);
  ending_ = true;
}

void RequestObject::Publish(RequestProgress progress) {
  const std::lock_guard lock(mutex_);
  has_news_ = has_news_ || progress.state != progress_.state;
  progress_ = std::move(progress);
  changed_.notify_all();
}

}  // namespace platform::win32
