#pragma once
// Decides by its header whether an answer is plainly a live stream, whose body never ends.
// Not for what the body of another answer is; a playlist may have any type.

#include "platform/http/answer_header.h"

namespace platform::http {

/// A station header ("icy-..."), or a sound or video type, and no Content-Length. A type that playlists have
/// (audio/x-mpegurl, audio/x-scpls ...), or text of any kind, is never plainly a stream.
[[nodiscard]] bool IsLiveAnswer(const AnswerHeader& header);

}  // namespace platform::http
