#pragma once
// Where recordings go: the program's folder inside the user's music folder.
// Not for the names of the recorded files.

#include "ports/environment.h"
#include "ports/files.h"
#include "ports/native_paths.h"
#include "ports/text.h"

namespace recorder {

/// "Funkhausplayer" inside $XDG_MUSIC_DIR; without that variable inside the folder that the user's
/// user-dirs.dirs names, otherwise inside "Music" of the home folder. Without a home folder it is the
/// program's own folder. Values that are no absolute path do not count. The folder need not exist.
/// Public reference: xdg-user-dirs of freedesktop.org.
[[nodiscard]] platform::Text MusicFolder(platform::Environment& environment, platform::Files& files,
                                         platform::NativePaths& paths);

/// Makes every missing level of the folder; true when the folder is there afterwards.
bool MakeFolder(platform::Files& files, const platform::Text& folder);

/// The "file" address of a folder, RFC 8089, for the desktop's file manager.
[[nodiscard]] platform::Text FolderAddress(platform::NativePaths& paths, const platform::Text& folder);

}  // namespace recorder
