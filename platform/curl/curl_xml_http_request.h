#pragma once
// Adapter: the asynchronous request object on libcurl.
// Not for streams; those are read through platform/curl/curl_internet.h.

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "platform/curl/transfer.h"
#include "ports/text_conversion.h"
#include "ports/xml_http_request.h"

namespace platform::curl {

/// The only known class is "MSXML2.ServerXMLHTTP.6.0" (any case). A request sends "Host" and "User-Agent:
/// Funkhausplayer" and nothing else.
class CurlXmlHttpRequests final : public XmlHttpRequests {
 public:
  /// The longest body with which a request completes, in bytes.
  static constexpr std::size_t kLongestBody = 1024 * 1024;

  explicit CurlXmlHttpRequests(TextConversion& conversion) : conversion_(conversion) {}
  std::unique_ptr<XmlHttpRequest> CreateObject(const Text& class_name) override;

 private:
  TextConversion& conversion_;
};

}  // namespace platform::curl
