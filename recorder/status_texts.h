#pragma once
// The status of a recording in German. Not where it is shown.

#include <cstdint>

#include "recorder/station_recording.h"

namespace recorder {

/// One sentence: what the recording is doing, and why it is not recording.
[[nodiscard]] platform::Text PhaseText(const Status& status);

/// "hh:mm:ss"; the hours grow beyond two digits.
[[nodiscard]] platform::Text TimeText(std::int64_t seconds);

/// "512 Byte", "3,4 KB", "12,0 MB", "1,5 GB"; a KB is 1000 bytes.
[[nodiscard]] platform::Text BytesText(std::uint64_t bytes);

/// "1 Datei", "2 Dateien".
[[nodiscard]] platform::Text FilesText(std::uint64_t files);

/// A text from a server on one line: control characters become blanks.
[[nodiscard]] platform::Text OneLine(platform::Text text);

}  // namespace recorder
