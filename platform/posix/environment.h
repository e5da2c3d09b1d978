#pragma once
// Adapter: environment variables, the program's folder and its process number.
// Not for reading settings or files.

#include <string>

#include "platform/environment.h"
#include "platform/native_paths.h"

namespace platform::posix {

/// What decides where a user's configuration lies; empty for a variable that is not set.
struct HomeVariables {
  std::string xdg_config_home;
  std::string home;
  std::string account_home;  ///< of the user's account, for a process without HOME
};

/// $XDG_CONFIG_HOME when it is an absolute path, otherwise ".config" in the home folder.
/// Public reference: the XDG base directories of freedesktop.org.
std::string ConfigurationFolder(const HomeVariables& variables);

/// Values are carried as native paths are, so that a folder in a variable can be used at once. When APPDATA
/// is not set, its value is the configuration folder, which is made when it is missing, because the program
/// creates only the last level of a path. The paths must outlive the object.
class PosixEnvironment final : public Environment {
 public:
  explicit PosixEnvironment(NativePaths& paths);

  Text GetEnvironmentVariableW(const Text& name) override;
  Text ProgramFolder() override;
  std::uint32_t GetCurrentProcessId() override;

 private:
  NativePaths& paths_;
};

}  // namespace platform::posix
