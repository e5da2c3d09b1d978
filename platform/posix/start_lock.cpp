#include "platform/posix/start_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace platform::posix {

StartLock::State StartLock::Try() {
  constexpr mode_t kOwnerOnly = 0600;
  if (file_.IsOpen()) return State::kHeld;
  while (true) {
    file_ = FileDescriptor(
        ::open(path_.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kOwnerOnly));
    if (!file_.IsOpen()) return State::kImpossible;
    if (::flock(file_.Get(), LOCK_EX | LOCK_NB) != 0) {
      const int error = errno;
      file_.Close();
      if (error == EINTR) continue;
      return error == EWOULDBLOCK ? State::kTaken : State::kImpossible;
    }
    if (NamesOurFile()) return State::kHeld;
    // The file was deleted between the two steps: the next process would lock another one.
    file_.Close();
  }
}

bool StartLock::NamesOurFile() const {
  struct stat named {};
  struct stat ours {};
  return ::stat(path_.c_str(), &named) == 0 && ::fstat(file_.Get(), &ours) == 0 &&
         named.st_dev == ours.st_dev && named.st_ino == ours.st_ino;
}

}  // namespace platform::posix
