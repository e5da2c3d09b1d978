#pragma once
// Port: HTTP through the internet library's operations: session, connection, request, answer.
// Not for small documents fetched in the background (ports/xml_http_request.h).

#include <cstddef>
#include <cstdint>
#include <span>

#include "ports/text.h"

namespace platform {

/// A session, connection or request; zero is none. Every non-zero handle needs one InternetCloseHandle,
/// children before parents.
enum class InternetHandle : std::uint32_t { kNone = 0 };

inline constexpr std::uint32_t kInternetOpenTypeDirect = 1;        ///< no proxy
inline constexpr std::uint32_t kInternetServiceHttp = 3;           ///< INTERNET_SERVICE_HTTP
inline constexpr std::uint32_t kInternetFlagReload = 0x80000000u;  ///< INTERNET_FLAG_RELOAD: no cache
inline constexpr std::uint32_t kInternetFlagSecure = 0x00800000u;  ///< INTERNET_FLAG_SECURE: TLS
inline constexpr std::uint32_t kHttpQueryStatusCode = 19;          ///< HTTP_QUERY_STATUS_CODE
inline constexpr std::uint32_t kHttpQueryRawHeadersCrLf = 22;      ///< HTTP_QUERY_RAW_HEADERS_CRLF

/// How a read ended.
struct InternetRead {
  bool ok = false;        ///< the operation's own result; a slice without data is a success of 0 bytes
  std::size_t count = 0;  ///< bytes placed in the buffer
  bool ended = false;     ///< nothing will come any more; everything before it has been read
};

/// Why a request got no answer. An answer with a status other than 200 is an answer.
enum class InternetFailure : std::uint8_t {
  kNone,
  kNoAnswer,  ///< the server, or the host, was silent until the time was up, or cannot be reached at all
  kUnknownHost,
  kRefused,  ///< nobody listens on the port
  kGivenUp,  ///< the wait was ended early, because the user wants something else; the server may be
             ///< well
  kOther     ///< cut, too many redirects, a certificate, no HTTP ...
};

/// All operations are called on the user-interface thread. Connecting and a silent answer are bounded to
/// 10 s each, and to 30 s together, or to the session's own limit (SetWaitLimit); meanwhile the window is
/// painted, and input that ends a wait (MessageLoop::InputEndsWait) makes the operation fail at once with
/// kGivenUp. Redirects are followed (301, 302,
/// 303, 307, 308, at most 10, from http to https too); status and headers are those of the last answer.
/// Certificates are checked. Nothing throws.
/// Public references: RFC 9110 and RFC 9112; the "ICY 200 OK" status line of SHOUTcast servers counts as
/// status 200.
class Internet {
 public:
  virtual ~Internet() = default;

  virtual InternetHandle InternetOpenW(const Text& agent, std::uint32_t access_type) = 0;

  /// From now on every request inside the session is answered within this time, name look-up, connecting and
  /// redirects included, or fails with kNoAnswer. For sessions only; the time is above 0.
  virtual bool SetWaitLimit(InternetHandle session, std::uint32_t milliseconds) = 0;

  /// Prepares a connection; the host may turn out to be unreachable only when a request is sent. An empty
  /// host fails.
  virtual InternetHandle InternetConnectW(InternetHandle session, const Text& host, std::uint16_t port,
                                          std::uint32_t service) = 0;

  /// A path without a leading "/" is sent with one.
  virtual InternetHandle HttpOpenRequestW(InternetHandle connection, const Text& verb, const Text& path,
                                          const Text& version, std::uint32_t flags) = 0;

  /// Sends the request with the additional header lines and waits for the answer's headers.
  virtual bool HttpSendRequestW(InternetHandle request, const Text& headers) = 0;

  /// Copies the queried text as UTF-16 bytes into `buffer`. `size` holds the buffer's size in bytes and
  /// receives the text's size in bytes, without a terminating NUL. False when the buffer is too small (then
  /// `size` is what is needed) or when there is nothing to report. The raw header block has CR LF line ends,
  /// the status line first, and at most 256 KiB; bytes outside ASCII come through code page 1252.
  virtual bool HttpQueryInfoW(InternetHandle request, std::uint32_t info_level, std::span<std::byte> buffer,
                              std::uint32_t& size) = 0;

  /// Opens an address with the additional header lines and waits for the answer's headers.
  virtual InternetHandle InternetOpenUrlW(InternetHandle session, const Text& url, const Text& headers,
                                          std::uint32_t flags) = 0;

  /// Fills the buffer, waiting no longer than a short slice (at most 100 ms); a slice in which it cannot be
  /// filled brings nothing. A read is short, with what there is, only when the server has ended or has sent
  /// nothing for a while. After the end every read brings nothing, still takes its slice, and reports the
  /// end: as a success when it was clean, as a failure when the connection was cut. A server is never read
  /// ahead by more than a fixed buffer.
  virtual InternetRead InternetReadFile(InternetHandle request, std::span<std::byte> buffer) = 0;

  virtual bool InternetCloseHandle(InternetHandle handle) = 0;

  /// Why the latest HttpSendRequestW or InternetOpenUrlW failed; kNone when it did not, or none was called
  /// yet.
  [[nodiscard]] virtual InternetFailure LastFailure() const = 0;
};

}  // namespace platform
