#pragma once
// Fetches the text behind an address within one second of the whole-second clock.
// Not for deciding what the text is (stream/playlist_text.h).

#include <optional>

#include "stream/stream_state.h"

namespace stream {

/// The text, an empty one for a live stream, or nothing when it was not complete in time. The window
/// processes its messages meanwhile.
std::optional<Text> FetchPlaylistText(const StreamState& state, const Text& address);

}  // namespace stream
