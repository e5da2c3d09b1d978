#include "platform/win32/internet/win32_xml_http_request.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <thread>

#include "platform/http/address.h"
#include "platform/http/body_text.h"
#include "platform/win32/internet/charsets.h"
#include "platform/win32/internet/request_object.h"
#include "platform/win32/internet/script_object.h"

namespace platform::win32 {
namespace {

constexpr std::chrono::milliseconds kLongestLook{5};

class Win32XmlHttpRequest final : public XmlHttpRequest {
 public:
  Win32XmlHttpRequest(TextConversion& conversion, const Text& class_name, std::chrono::seconds longest_calls)
      : conversion_(conversion), class_name_(class_name), longest_calls_(longest_calls) {}
  ~Win32XmlHttpRequest() override { EndObject(); }
  Win32XmlHttpRequest(const Win32XmlHttpRequest&) = delete;
  Win32XmlHttpRequest& operator=(const Win32XmlHttpRequest&) = delete;

  bool SetOption(std::int32_t option, std::int32_t value) override {
    // One that has completed does nothing more.
    if (state_ == kCompleted) EndObject();
    const bool has_object = HasObject();
    options_[option] = value;
    return has_object && Set(option, value);
  }

  bool Open(const Text& method, const Text& url, bool asynchronous) override {
    // An object that has only been given options serves this request.
    if (state_ != kNotOpened) Abort();
    const bool is_open = method == u"GET" && asynchronous && OpenAddress(url);
    if (is_open) state_ = kOpened;
    if (!is_open) left_ = longest_calls_;
    return is_open;
  }

  bool Send() override {
    if (state_ != kOpened || sent_) return false;
    sent_ = Judge(object_->Send(left_));
    if (!sent_) left_ = longest_calls_;
    return sent_;
  }

  std::int32_t ReadyState() override {
    if (state_ == kCompleted) return state_;
    if (!sent_) {
      // So that a caller that keeps asking does not spin.
      std::this_thread::sleep_for(kLongestLook);
      return state_;
    }
    const RequestProgress progress = object_->Progress(kLongestLook);
    state_ = std::clamp<std::int32_t>(progress.state, kOpened, kCompleted);
    if (state_ == kCompleted && progress.has_body)
      text_ = http::DecodeBody(conversion_, DecodeCharset, progress.body, progress.content_type);
    return state_;
  }

  Text ResponseText() override { return state_ == kCompleted ? text_ : Text(); }

  void Abort() override {
    Forget();
    left_ = longest_calls_;
  }

 private:
  bool OpenAddress(const Text& url) {
    const auto address = http::RequestAddress(conversion_, url);
    if (!address || !HasObject()) return false;
    const Text asked = conversion_.MultiByteToWideChar(CodePage::kUtf8, *address);
    return Run([asked](ScriptObject& object) {
      return object.Call(u"open", {Text(u"GET"), asked, true}).has_value();
    });
  }

  bool HasObject() {
    if (object_) return true;
    object_ = RequestObject::Start(class_name_);
    for (const auto& [option, value] : options_) {
      if (object_) Set(option, value);
    }
    return object_ != nullptr;
  }

  bool Set(std::int32_t option, std::int32_t value) {
    return Run([option, value](ScriptObject& object) {
      return object.Call(u"setOption", {option, value}).has_value();
    });
  }

  bool Run(const RequestObject::Task& task) { return Judge(object_->Run(task, left_)); }

  bool Judge(CallResult result) {
    if (result == CallResult::kLate) Forget();
    return result == CallResult::kDone;
  }

  void EndObject() {
    if (object_) object_->End();
    object_.reset();
  }

  void Forget() {
    EndObject();
    state_ = kNotOpened;
    sent_ = false;
    text_.clear();
  }

  TextConversion& conversion_;
  const Text class_name_;
  const std::chrono::seconds longest_calls_;
  std::map<std::int32_t, std::int32_t> options_;
  std::shared_ptr<RequestObject> object_;
  std::int32_t state_ = kNotOpened;
  bool sent_ = false;
  Text text_;
  /// For the calls of this request; all of it again once one of them has ended it.
  RequestObject::Clock::duration left_ = longest_calls_;
};

}  // namespace

std::unique_ptr<XmlHttpRequest> Win32XmlHttpRequests::CreateObject(const Text& class_name) {
  if (!ScriptObject::IsKnown(class_name)) return nullptr;
  return std::make_unique<Win32XmlHttpRequest>(conversion_, class_name, longest_calls_);
}

}  // namespace platform::win32
