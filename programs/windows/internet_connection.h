#pragma once
// The adapters that reach servers, for both programs. Not what is asked of servers.

#include <memory>

namespace platform {
class Internet;
class MessageLoop;
class TextConversion;
class XmlHttpRequests;
}  // namespace platform

/// Everything given outlives it.
class InternetConnection {
 public:
  InternetConnection(platform::MessageLoop& loop, platform::TextConversion& conversion);
  ~InternetConnection();
  InternetConnection(const InternetConnection&) = delete;
  InternetConnection& operator=(const InternetConnection&) = delete;

  [[nodiscard]] platform::Internet& Internet() const;
  [[nodiscard]] platform::XmlHttpRequests& Requests() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};
