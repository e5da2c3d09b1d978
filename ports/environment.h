#pragma once
// Port: what the running process knows about its environment. Not for files or settings.

#include <cstdint>

#include "ports/text.h"

namespace platform {

class Environment {
 public:
  virtual ~Environment() = default;

  /// The value of an environment variable, empty when it is not set. "APPDATA" always has a value: where
  /// the system does not set it, the user's configuration folder takes its place.
  virtual Text GetEnvironmentVariableW(const Text& name) = 0;

  /// The folder of the running program file (links resolved), without a trailing separator unless it is
  /// a root folder.
  virtual Text ProgramFolder() = 0;

  /// The user's folder for music, which need not exist; the program's own folder when there is none.
  virtual Text MusicFolder() = 0;

  /// The program's own file that goes with the file `path`, in the user's folder for state: the same one by
  /// whatever name `path`'s folder is given. `extension` distinguishes several (".lock"). The folder is
  /// created when it is missing; whether it can be used shows when the file is used.
  virtual Text StateFile(const Text& path, const Text& extension) = 0;

  /// The number by which the system knows this process.
  virtual std::uint32_t GetCurrentProcessId() = 0;
};

}  // namespace platform
