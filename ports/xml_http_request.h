#pragma once
// Port: the asynchronous request object by which small documents (playlists) are fetched.
// Not for streams: past 1 MiB a request can no longer complete.

#include <cstdint>
#include <memory>

#include "ports/text.h"

namespace platform {

inline constexpr std::int32_t kSxhOptionIgnoreServerSslCertErrorFlags = 2;
inline constexpr std::int32_t kSxhServerCertIgnoreAllServerErrors = 0x3300;

/// One request: SetOption, Open, Send, then ReadyState until it is 4, ResponseText, Abort. Abort is allowed
/// at any time. Destroying the object ends the request. A false result means that the call failed. No member
/// waits for a server, though the system may need a moment to begin a request.
class XmlHttpRequest {
 public:
  virtual ~XmlHttpRequest() = default;
  virtual bool SetOption(std::int32_t option, std::int32_t value) = 0;
  virtual bool Open(const Text& method, const Text& url, bool asynchronous) = 0;
  virtual bool Send() = 0;
  /// 0 not opened, 1 opened, 2 headers received, 3 body arriving, 4 completed. Asking lets the transfer
  /// continue; it never waits longer than a few milliseconds. An answer that is plainly a live stream (an
  /// "icy-" header, or a sound or video type that is not a playlist's, and no Content-Length) is completed,
  /// without a text, as soon as its headers are there: its body would never end. So is a request that failed.
  virtual std::int32_t ReadyState() = 0;
  /// The body, decoded by the response's charset (a byte-order mark first, UTF-8 when none is named). Empty
  /// before completion, and for a live stream and a failure after it.
  virtual Text ResponseText() = 0;
  virtual void Abort() = 0;
};

class XmlHttpRequests {
 public:
  virtual ~XmlHttpRequests() = default;
  /// A new request object of the named class; null when the system does not know it.
  virtual std::unique_ptr<XmlHttpRequest> CreateObject(const Text& class_name) = 0;
};

}  // namespace platform
