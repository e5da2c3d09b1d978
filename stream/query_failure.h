#pragma once
// Why a header query gave no headers. Not for reporting it to the user; the window has the words.

#include <cstdint>

#include "ports/internet.h"

namespace stream {

struct QueryFailure {
  enum class Kind : std::uint8_t {
    kNone,         ///< the headers are there
    kNoAnswer,     ///< the server, or its host, was silent until the time was up, or cannot be reached
    kUnknownHost,  ///< no host of this name is known
    kRefused,      ///< nobody listens on the port
    kGivenUp,      ///< the wait was ended early, because the user wants something else
    kHttpStatus,   ///< the server answered with another status than 200: see `http_status`
    kOther         ///< anything else: not a server's address, a certificate, a cut answer ...
  };

  Kind kind = Kind::kNone;
  int http_status = 0;  ///< with kHttpStatus, 100 to 999

  friend bool operator==(const QueryFailure&, const QueryFailure&) = default;
};

/// The failure of a request that got no answer.
[[nodiscard]] QueryFailure QueryFailureFrom(platform::InternetFailure failure);

}  // namespace stream
