#pragma once
// The two recorders: blocking calls that copy the current stream into files until the stop flag is set.
// Not for starting the separate recording tool.

#include <cstdint>
#include <functional>

#include "stream/record_options.h"
#include "stream/stream_state.h"

namespace stream {

/// Both end when the stop flag is set, silently and at once when the stream cannot be opened, and when a
/// file cannot be opened or written any more; what was written stays. `folder` receives the files.

/// Everything goes into one file, "record" and the extension, unless `options` names it. Every read that
/// brings bytes appends the whole 512-byte buffer, stale bytes of earlier reads included, unless `options`
/// says otherwise.
void RecordPlain(StreamState& state, const Text& folder, const Text& extension,
                 const RecordOptions& options = {});

/// Called at every block that is not empty: title, web address, the block without line feeds.
using CurrentPlaying =
    std::function<void(const Text& sStreamTitle, const Text& sStreamUrl, const Text& sStreamMetaDataRaw)>;

/// Audio goes into a file for each title; before the first title it is dropped. A block that names the
/// same title opens its file again and writes from its start. Two empty blocks without a file open the
/// file "unknown".
void RecordByTitle(StreamState& state, const Text& folder, const Text& extension, std::int32_t lMetaInt,
                   const CurrentPlaying& playing, const RecordOptions& options = {});

}  // namespace stream
