#pragma once
// The three readers of a stream's current title: blocking calls that keep the window alive and discard the
// audio.
// Not for repairing a title's encoding, and not for recording (stream/recorders.h).

#include <cstdint>

#include "stream/stream_state.h"

namespace stream {

/// Each opens the state's address as it is when called, reads until its own rule ends it, and closes the
/// connection before it returns. The result is the title, "TimeOut" (the timed readers), or empty: no
/// connection, no title in the block, or ended from outside. Connecting and waiting for the answer's header
/// take 3 seconds at most, in which the window takes no input; an address that counts as silent is not
/// opened.

/// Skips titles that are not longer than their own position; times out after 6 seconds.
Text ReadLongTitle(StreamState& state, std::int32_t lMetaInt);

/// Ends with the first block that is not empty; times out after 8 seconds. The bytes become characters
/// through the ANSI code page.
Text ReadFirstBlockTitle(StreamState& state, std::int32_t lMetaInt);

/// Ends with the first block that is not empty, with the second empty one, or when the stop flag is set,
/// which it leaves set in the first two cases. Has no time limit of its own.
Text ReadActiveTitle(StreamState& state, std::int32_t lMetaInt);

}  // namespace stream
