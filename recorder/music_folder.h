#pragma once
// Where recordings go: the program's folder inside the user's music folder.
// Not for the names of the recorded files.

#include "ports/environment.h"
#include "ports/files.h"
#include "ports/text.h"

namespace recorder {

/// "Funkhausplayer" inside the user's music folder. It need not exist.
[[nodiscard]] platform::Text RecordingFolder(platform::Environment& environment);

/// Creates every missing level of the folder; true when the folder exists afterwards.
bool MakeFolder(platform::Files& files, const platform::Text& folder);

}  // namespace recorder
