#pragma once
// Converts addresses from the program's text to the bytes of a request.
// Not for deciding what is a station's address; that is up to the stream client.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ports/text_conversion.h"

namespace platform::http {

/// An http or https address as ASCII bytes, except for the host, which stays UTF-8: blanks, control
/// characters and everything outside ASCII after the host become percent-encoded UTF-8 (RFC 3986, section
/// 2.1); what is already encoded stays as it is. Blanks and control characters (U+0000 to U+0020, U+007F) at
/// the address's ends are dropped; a line end often comes with an address. Nothing for any other scheme, an
/// empty host, or a host part that holds blanks or control characters.
std::optional<std::string> RequestAddress(TextConversion& conversion, TextView url);

/// The same for bytes, as a server names an address.
std::optional<std::string> RequestAddress(std::string_view url);

enum class Security { kPlain, kTls };

/// The address of a path on a host. Port 0 is the scheme's own; a path without a leading "/" gets one.
/// Nothing when `host` contains what cannot be part of a host name.
std::optional<std::string> RequestAddress(TextConversion& conversion, TextView host, std::uint16_t port,
                                          TextView path, Security security);

/// What a request needs to know of an address.
struct AddressParts {
  Security security = Security::kPlain;
  std::string user;      ///< "name" or "name:password", decoded; empty when the address names nobody
  std::string host;      ///< UTF-8; an IPv6 address in its brackets
  std::uint16_t port{};  ///< the scheme's own when the address names none
  std::string target;    ///< path and query, from the "/" on; without what follows a "#"
};

/// `address` as made by RequestAddress. Nothing when its port is no number up to 65,535.
std::optional<AddressParts> PartsOf(std::string_view address);

/// What `reference`, as a redirect names it, means at `address`: another address as made by RequestAddress,
/// or nothing when that could not be asked for. Public reference: RFC 3986, section 5.2.
std::optional<std::string> ResolveReference(std::string_view address, std::string_view reference);

}  // namespace platform::http
