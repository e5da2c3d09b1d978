#pragma once
// Keeps two programs from reading, changing and replacing the files of one folder at the same time.
// Advisory: only programs that ask for this lock wait for one another. Not for recordings.

#include <string>

#include "platform/disk/profile_locks.h"
#include "platform/posix/file_descriptor.h"

namespace platform::posix {

/// Held from construction to destruction. A file cannot carry the lock itself, because replacing it puts
/// another file under its name. Where the file system has no locks, work continues without one.
class FolderLock {
 public:
  explicit FolderLock(const std::string& folder);
  [[nodiscard]] disk::FolderLocking Get() const { return state_; }

 private:
  FileDescriptor folder_;
  disk::FolderLocking state_;
};

}  // namespace platform::posix
