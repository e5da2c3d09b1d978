#pragma once
// Where a user's music is, by the rules of freedesktop.org. Not for what the program puts there.

#include <string>

namespace platform::posix {

/// What determines it; empty for a variable that is not set.
struct MusicVariables {
  std::string music;        ///< XDG_MUSIC_DIR
  std::string config_home;  ///< XDG_CONFIG_HOME
  std::string home;         ///< HOME
};

/// $XDG_MUSIC_DIR; without that variable the folder that the user's user-dirs.dirs names, otherwise "Music"
/// in the home folder. Values that are not absolute paths do not count. Empty without a home folder. It need
/// not exist. Public reference: xdg-user-dirs of freedesktop.org.
std::string MusicFolder(const MusicVariables& variables);

}  // namespace platform::posix
