#pragma once
// Adapter: environment variables, the program's folders and its process number.
// Not for reading settings or files.

#include <string>

#include "ports/environment.h"
#include "ports/native_paths.h"

namespace platform::posix {

/// What determines where a user's folder of one kind is; empty for a variable that is not set.
struct HomeVariables {
  std::string own;  ///< the variable that names this kind of folder
  std::string home;
  std::string account_home;  ///< of the user's account, for a process without HOME
};

/// $XDG_CONFIG_HOME when it is an absolute path, otherwise ".config" in the home folder.
/// Public reference, here and below: the XDG base directories of freedesktop.org.
std::string ConfigurationFolder(const HomeVariables& variables);

/// $XDG_STATE_HOME when it is an absolute path, otherwise ".local/state" in the home folder; the program's
/// own folder in it.
std::string StateFolder(const HomeVariables& variables);

/// $XDG_DATA_HOME when it is an absolute path, otherwise ".local/share" in the home folder; the program's own
/// folder in it.
std::string DataFolder(const HomeVariables& variables);

/// The data folder of the user who runs this process; it need not exist.
std::string UsersDataFolder();

/// Values are converted like native paths, so that a folder in a variable can be used at once. When APPDATA
/// is not set, its value is the configuration folder, which is made when it is missing, because the program
/// creates only the last level of a path. State files are named after a number made from the path to which
/// they belong. The paths must outlive the object.
class PosixEnvironment final : public Environment {
 public:
  explicit PosixEnvironment(NativePaths& paths);

  Text GetEnvironmentVariableW(const Text& name) override;
  Text ProgramFolder() override;
  Text MusicFolder() override;
  Text StateFile(const Text& path, const Text& extension) override;
  std::uint32_t GetCurrentProcessId() override;

 private:
  NativePaths& paths_;
};

}  // namespace platform::posix
