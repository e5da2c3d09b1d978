#pragma once
// Adapter: the asynchronous request object, which is the system's own.
// Not for streams; those are read through internet/win32_internet.h.

#include <chrono>
#include <memory>

#include "ports/text_conversion.h"
#include "ports/xml_http_request.h"

namespace platform::win32 {

/// Every class that the system knows and that has the members of the request object. The body is decoded
/// here, for the object's own text knows fewer charsets.
class Win32XmlHttpRequests final : public XmlHttpRequests {
 public:
  static constexpr std::chrono::seconds kLongestCalls{1};
  /// `longest_calls`: how long the calls of one request together are waited for.
  explicit Win32XmlHttpRequests(TextConversion& conversion,
                                std::chrono::seconds longest_calls = kLongestCalls)
      : conversion_(conversion), longest_calls_(longest_calls) {}
  std::unique_ptr<XmlHttpRequest> CreateObject(const Text& class_name) override;

 private:
  TextConversion& conversion_;
  const std::chrono::seconds longest_calls_;
};

}  // namespace platform::win32
