#pragma once
// The right to run of one start of the program among several: a lock that the system releases when its holder
// ends, in whatever way. Not for files that several programs write (platform/posix/folder_lock.h).

#include <string>
#include <utility>

#include "platform/posix/file_descriptor.h"

namespace platform::posix {

/// The lock is on an empty file of its own, which stays behind: only the lock counts, never the file.
class StartLock {
 public:
  enum class State {
    kHeld,        ///< by this object, until it is destroyed
    kTaken,       ///< by another one, of this process or of another
    kImpossible,  ///< the file cannot be made or the file system has no locks: nobody can hold it
  };

  explicit StartLock(std::string path) : path_(std::move(path)) {}

  /// Tries to take the lock, without waiting.
  State Try();

 private:
  [[nodiscard]] bool NamesOurFile() const;

  std::string path_;
  FileDescriptor file_;
};

}  // namespace platform::posix
