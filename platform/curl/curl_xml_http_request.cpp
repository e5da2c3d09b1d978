#include "platform/curl/curl_xml_http_request.h"

#include <array>
#include <optional>
#include <thread>
#include <utility>

#include "platform/curl/charsets.h"
#include "platform/http/address.h"
#include "platform/http/body_text.h"
#include "platform/http/live_answer.h"

namespace platform::curl {
namespace {

constexpr milliseconds kLongestLook{5};

enum State : std::int32_t { kNotOpened, kOpened, kHeadersReceived, kBodyArriving, kCompleted };

class CurlXmlHttpRequest final : public XmlHttpRequest {
 public:
  explicit CurlXmlHttpRequest(TextConversion& conversion) : conversion_(conversion) {}

  bool SetOption(std::int32_t option, std::int32_t value) override {
    if (option != kSxhOptionIgnoreServerSslCertErrorFlags) return false;
    options_.certificates =
        value == kSxhServerCertIgnoreAllServerErrors ? Certificates::kIgnored : Certificates::kChecked;
    return value == 0 || value == kSxhServerCertIgnoreAllServerErrors;
  }

  bool Open(const Text& method, const Text& url, bool asynchronous) override {
    Abort();
    auto address = http::RequestAddress(conversion_, url);
    if (method != u"GET" || !asynchronous || !address) return false;
    options_.address = std::move(*address);
    options_.agent = "Funkhausplayer";
    state_ = kOpened;
    return true;
  }

  bool Send() override {
    if (state_ != kOpened || transfer_) return false;
    transfer_ = std::make_unique<Transfer>(options_);
    return true;
  }

  std::int32_t ReadyState() override {
    if (state_ == kCompleted) return state_;
    if (!transfer_) {
      // So that a caller that keeps asking does not spin.
      std::this_thread::sleep_for(kLongestLook);
      return state_;
    }
    transfer_->Work(kLongestLook);
    TakeBody();
    state_ = StateOfTransfer();
    if (state_ == kCompleted) Complete();
    return state_;
  }

  Text ResponseText() override { return state_ == kCompleted ? text_ : Text(); }

  void Abort() override {
    transfer_.reset();
    body_.clear();
    text_.clear();
    state_ = kNotOpened;
  }

 private:
  void TakeBody() {
    std::array<std::byte, 4096> piece;
    while (const std::size_t count = transfer_->Take(piece)) {
      body_.append(reinterpret_cast<const char*>(piece.data()), count);  // NOLINT: bytes are characters
    }
    if (body_.size() <= CurlXmlHttpRequests::kLongestBody) return;
    // It can no longer complete, so neither the connection nor what has come is of any use.
    transfer_.reset();
    body_ = {};
  }

  [[nodiscard]] std::int32_t StateOfTransfer() const {
    if (!transfer_) return kBodyArriving;
    if (transfer_->HasEnded() || IsLive()) return kCompleted;
    if (!body_.empty()) return kBodyArriving;
    return transfer_->IsAnswered() ? kHeadersReceived : kOpened;
  }

  [[nodiscard]] bool IsLive() const {
    return transfer_->IsAnswered() && http::IsLiveAnswer(transfer_->Header());
  }

  // A transfer that failed and a live stream are completed too, but have no text.
  void Complete() {
    if (!transfer_->HasFailed() && !IsLive()) {
      text_ = http::DecodeBody(conversion_, DecodeCharset, body_, transfer_->Header().Value("Content-Type"));
    }
    transfer_.reset();
    body_ = {};
  }

  TextConversion& conversion_;
  TransferOptions options_;
  std::int32_t state_ = kNotOpened;
  std::unique_ptr<Transfer> transfer_;
  std::string body_;
  Text text_;
};

}  // namespace

std::unique_ptr<XmlHttpRequest> CurlXmlHttpRequests::CreateObject(const Text& class_name) {
  if (conversion_.CharLowerW(class_name) != u"msxml2.serverxmlhttp.6.0") return nullptr;
  return std::make_unique<CurlXmlHttpRequest>(conversion_);
}

}  // namespace platform::curl
