#pragma once
// Asks a station's server for its headers, without reading any audio.
// Not for looking values up in them (stream/header_lines.h).

#include <cstdint>
#include <vector>

#include "ports/internet.h"
#include "stream/query_failure.h"
#include "stream/text_pieces.h"

namespace stream {

struct QueriedHeaders {
  /// The raw header lines of the server's answer, the status line first and the block's closing empty lines
  /// at the end; none when any step fails or the status is not "200".
  std::vector<Text> lines;
  QueryFailure failure;
};

/// Waits for at most `wait_limit` milliseconds (0: as long as the internet library does), while the window is
/// painted but takes no input.
QueriedHeaders QueryStreamHeaders(platform::Internet& internet, const Text& address,
                                  std::uint32_t wait_limit);

/// One queried value as text; empty when there is none.
Text QueryHeaderText(platform::Internet& internet, platform::InternetHandle request,
                     std::uint32_t info_level);

}  // namespace stream
