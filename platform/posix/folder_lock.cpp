#include "platform/posix/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <time.h>

#include <cerrno>
#include <chrono>

namespace platform::posix {
namespace {

constexpr std::chrono::seconds kLongestWait{5};
constexpr long kNanosecondsBetweenTries = 500'000;

disk::FolderLocking Lock(const FileDescriptor& folder) {
  if (!folder.IsOpen()) {
    const bool missing = errno == ENOENT || errno == ENOTDIR;
    return missing ? disk::FolderLocking::kNoFolder : disk::FolderLocking::kHeld;
  }
  const auto deadline = std::chrono::steady_clock::now() + kLongestWait;
  while (::flock(folder.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return disk::FolderLocking::kHeld;
    if (std::chrono::steady_clock::now() >= deadline) return disk::FolderLocking::kBusy;
    const timespec pause{0, kNanosecondsBetweenTries};
    ::nanosleep(&pause, nullptr);
  }
  return disk::FolderLocking::kHeld;
}

}  // namespace

FolderLock::FolderLock(const std::string& folder)
    : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)), state_(Lock(folder_)) {}

}  // namespace platform::posix
