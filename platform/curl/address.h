#pragma once
// Converts addresses from the program's text to the bytes of a request.
// Not for deciding what is a station's address; that is up to the stream client.

#include <cstdint>
#include <optional>
#include <string>

#include "ports/text_conversion.h"

namespace platform::curl {

/// An http or https address as ASCII bytes, except for the host, which stays UTF-8: blanks, control
/// characters and everything outside ASCII after the host become percent-encoded UTF-8 (RFC 3986, section
/// 2.1); what is already encoded stays as it is. Blanks and control characters (U+0000 to U+0020, U+007F) at
/// the address's ends are dropped; a line end often comes with an address. Nothing for any other scheme, an
/// empty host, or a host part that holds blanks or control characters.
std::optional<std::string> RequestAddress(TextConversion& conversion, TextView url);

enum class Security { kPlain, kTls };

/// The address of a path on a host. Port 0 is the scheme's own; a path without a leading "/" gets one.
/// Nothing when `host` contains what cannot be part of a host name.
std::optional<std::string> RequestAddress(TextConversion& conversion, TextView host, std::uint16_t port,
                                          TextView path, Security security);

}  // namespace platform::curl
