#include "platform/win32/internet/win32_xml_http_request.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>
#include <vector>

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
  Win32XmlHttpRequest(TextConversion& conversion, const Text& class_name)
      : conversion_(conversion), class_name_(class_name) {}
  ~Win32XmlHttpRequest() override { EndObject(); }
  Win32XmlHttpRequest(const Win32XmlHttpRequest&) = delete;
  Win32XmlHttpRequest& operator=(const Win32XmlHttpRequest&) = delete;

  bool SetOption(std::int32_t option, std::int32_t value) override {
    options_.emplace_back(option, value);
    return HasObject() && Set(option, value);
  }

  bool Open(const Text& method, const Text& url, bool asynchronous) override {
    Abort();
    const auto address = http::RequestAddress(conversion_, url);
    if (method != u"GET" || !asynchronous || !address || !HasObject()) return false;
    const Text asked = conversion_.MultiByteToWideChar(CodePage::kUtf8, *address);
    const bool is_open = object_->Run([method, asked](ScriptObject& object) {
      return object.Call(u"open", {method, asked, true}).has_value();
    });
    state_ = is_open ? kOpened : kNotOpened;
    return is_open;
  }

  bool Send() override {
    if (state_ != kOpened || sent_) return false;
    sent_ = object_->Send();
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
    // An object that has only been given options serves the next request.
    if (state_ != kNotOpened) EndObject();
    state_ = kNotOpened;
    sent_ = false;
    text_.clear();
  }

 private:
  bool HasObject() {
    if (object_) return true;
    object_ = RequestObject::Start(class_name_);
    if (!object_) return false;
    for (const auto& [option, value] : options_) Set(option, value);
    return true;
  }

  bool Set(std::int32_t option, std::int32_t value) {
    return object_->Run([option, value](ScriptObject& object) {
      return object.Call(u"setOption", {option, value}).has_value();
    });
  }

  void EndObject() {
    if (object_) object_->End();
    object_.reset();
  }

  TextConversion& conversion_;
  const Text class_name_;
  std::vector<std::pair<std::int32_t, std::int32_t>> options_;
  std::shared_ptr<RequestObject> object_;
  std::int32_t state_ = kNotOpened;
  bool sent_ = false;
  Text text_;
};

}  // namespace

std::unique_ptr<XmlHttpRequest> Win32XmlHttpRequests::CreateObject(const Text& class_name) {
  if (!ScriptObject::IsKnown(class_name)) return nullptr;
  return std::make_unique<Win32XmlHttpRequest>(conversion_, class_name);
}

}  // namespace platform::win32
