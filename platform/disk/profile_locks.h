#pragma once
// The locks that the INI engine has of its folders, by number. Not for how a system locks a folder.

#include <cstdint>
#include <map>
#include <utility>

#include "ports/profile_files.h"

namespace platform::disk {

/// The result of asking for the lock of a folder.
enum class FolderLocking : std::uint8_t {
  kHeld,      ///< also, without a lock, where the file system has none
  kNoFolder,  ///< there is no such folder
  kBusy       ///< another program did not release it within five seconds
};

/// `FolderLock` is a system's lock, released at its end; its Get() says what came of it.
template <typename FolderLock>
class ProfileLocks {
 public:
  ProfileLocking Keep(FolderLock folder) {
    if (folder.Get() == FolderLocking::kBusy) return {};
    if (folder.Get() == FolderLocking::kNoFolder) {
      return {ProfileLocking::Result::kNoFolder, ProfileLock::kNone};
    }
    const ProfileLock lock{++last_lock_};
    locks_.try_emplace(lock, std::move(folder));
    return {ProfileLocking::Result::kHeld, lock};
  }
  void Release(ProfileLock lock) { locks_.erase(lock); }

 private:
  std::map<ProfileLock, FolderLock> locks_;
  std::uint32_t last_lock_ = 0;
};

}  // namespace platform::disk
