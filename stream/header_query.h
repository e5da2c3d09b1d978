#pragma once
// Asks a station's server for its answer's headers, without reading any audio.
// Not for looking values up in them (stream/header_lines.h).

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/internet.h"
#include "stream/text_pieces.h"

namespace stream {

/// The raw header lines of the server's answer, the status line first and the block's closing empty lines
/// at the end. Nothing when any step fails or the status is not "200". Waits as long as the internet
/// library does, while the window is painted but takes no input.
std::optional<std::vector<Text>> QueryStreamHeaders(platform::Internet& internet, const Text& address);

/// One queried value as text; empty when there is none.
Text QueryHeaderText(platform::Internet& internet, platform::InternetHandle request,
                     std::uint32_t info_level);

}  // namespace stream
