#pragma once
// Stream addresses as text: their open flags, and host, port and path for the header query.
// Not for connecting, and not for addresses in general: the rules here are the stream client's own.

#include <cstdint>
#include <optional>

#include "stream/text_pieces.h"

namespace stream {

/// The internet library's open flags for an address: no cache for "http://", and additionally secure for
/// "https://" (prefixes in any case). Nothing for an address with neither prefix.
std::optional<std::uint32_t> OpenFlagsOf(TextView address);

/// Where the header query goes.
struct QueryTarget {
  Text host;  ///< empty when the address names none; a connection to it fails
  std::uint16_t port = 0;
  Text path;
  std::uint32_t flags = 0;
};

/// Takes an address apart for the header query. Only lower-case schemes are removed, wherever they are.
/// Without a "/" the path is everything after the scheme, and without a ":" too there is no host. Nothing
/// when the port is not a number or does not fit into 16 bits.
std::optional<QueryTarget> QueryTargetOf(TextView address);

}  // namespace stream
