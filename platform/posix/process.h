#pragma once
// Starts independent processes and finds programs in PATH. Names are the system's own.
// Not for deciding what is to be started (platform/posix/shell.h).

#include <optional>
#include <string>
#include <vector>

namespace platform::posix {

struct Launch {
  std::string program;                 ///< path of the program file
  std::vector<std::string> arguments;  ///< without the program's own name
  std::string folder;                  ///< the process's working folder; empty: the caller's
};

/// Starts a process in a session of its own, with /dev/null as its standard files and no other open file. It
/// outlives the caller and leaves no zombie. False when the program could not be executed or the folder could
/// not be entered. May be called while other threads run.
bool StartProcess(const Launch& launch);

/// The first executable file of this name in the folders of PATH.
std::optional<std::string> FindInPath(const std::string& name);

/// True for a regular file that this process may execute.
bool IsExecutableFile(const std::string& path);

}  // namespace platform::posix
