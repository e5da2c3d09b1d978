#pragma once
// Which texts are web addresses, as found in station lists and dropped links.
// Not for taking apart a stream's address (stream/stream_address.h).

#include <cstddef>

#include "app/text/text.h"

namespace playlist {

/// Longest address that counts as one, in 16-bit units; far beyond what a server accepts.
inline constexpr std::size_t kLongestAddress = 4096;

/// True when `text` begins with `prefix`, which is in small ASCII letters, in any letter case.
[[nodiscard]] bool StartsWithIgnoringCase(app::TextView text, app::TextView prefix);

/// The host that an address names, without user, port and the brackets of a numeric one; empty when it names
/// none or is not an address with "://".
/// Public reference: RFC 3986, section 3.2.
[[nodiscard]] app::Text HostOf(app::TextView address);

/// True for "http://" or "https://" in any letter case followed by a host, without control characters and of
/// at most kLongestAddress.
[[nodiscard]] bool IsWebAddress(app::TextView text);

}  // namespace playlist
