#pragma once
// Adapter: the disk under the INI engine. Not for the format of INI files (platform/ini).

#include <string>
#include <utility>

#include "platform/disk/profile_locks.h"
#include "platform/posix/folder_lock.h"
#include "ports/profile_files.h"

namespace platform::posix {

/// The lock is FolderLock's, on the folder of the file that a link leads to.
class PosixProfileFiles final : public ProfileFiles {
 public:
  std::pair<ProfileReading, FileStamp> Stamp(const std::string& name) override;
  ProfileBytes Read(const std::string& name, std::size_t limit) override;
  std::optional<FileState> Replace(const std::string& name, std::string_view bytes) override;
  ProfileLocking Lock(const std::string& name) override;
  void Unlock(ProfileLock lock) override;

 private:
  ProfileLocking TryLock(const std::string& name);

  disk::ProfileLocks<FolderLock> locks_;
};

}  // namespace platform::posix
