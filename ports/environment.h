#pragma once
// Port: what the running process knows of its surroundings. Not for files or settings.

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

  /// The user's folder for music, which need not exist; the program's own folder where there is none.
  virtual Text MusicFolder() = 0;

  /// A file of the program's own, in its user's folder for state, that belongs to another file: the same one
  /// for every name that `path`'s folder has. `extension` tells several apart (".lock"). The folder is made
  /// when it is missing; whether it can be used shows when the file is.
  virtual Text StateFile(const Text& path, const Text& extension) = 0;

  /// The number by which the system knows this process.
  virtual std::uint32_t GetCurrentProcessId() = 0;
};

}  // namespace platform
