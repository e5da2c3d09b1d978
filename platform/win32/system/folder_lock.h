#pragma once
// Keeps two programs from reading, changing and replacing the files of one folder at the same time.
// Advisory: only programs that ask for this lock wait for one another. Not for recordings.

#include <string>

#include "platform/disk/profile_locks.h"
#include "platform/win32/system/owned_handle.h"

namespace platform::win32 {

/// Held from construction to destruction, both on one thread. The lock is a named object of this machine's,
/// because a folder cannot be locked; the same one by whatever name the folder is given. Programs of other
/// machines on the same network folder do not wait for it. Where no such object can be made, work continues
/// without one.
class FolderLock {
 public:
  /// An empty folder is the current one.
  explicit FolderLock(const std::wstring& folder);
  ~FolderLock();
  FolderLock(FolderLock&&) noexcept = default;
  FolderLock& operator=(FolderLock&&) noexcept = delete;
  [[nodiscard]] disk::FolderLocking Get() const { return state_; }

 private:
  OwnedHandle mutex_;
  disk::FolderLocking state_;
};

}  // namespace platform::win32
