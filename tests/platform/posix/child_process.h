#pragma once
// Runs a piece of a test in a process of its own: as a user without rights, or with a full disk.
// Not for starting programs.

#include <grp.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <functional>

namespace platform::posix {

/// What the child made of a check.
enum class ChildResult { kTrue, kFalse, kBroken };

inline ChildResult RunInChild(const std::function<bool()>& check) {
  const pid_t child = ::fork();
  if (child < 0) return ChildResult::kBroken;
  if (child == 0) {
    int code = 2;
    try {
      code = check() ? 0 : 1;
    } catch (const std::exception&) {
      code = 2;
    }
    ::_exit(code);
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return ChildResult::kBroken;
  if (WEXITSTATUS(status) > 1) return ChildResult::kBroken;
  return WEXITSTATUS(status) == 0 ? ChildResult::kTrue : ChildResult::kFalse;
}

constexpr uid_t kNobody = 65534;

/// The administrator may do everything, so a check of missing rights runs as "nobody" then.
inline ChildResult RunWithoutRights(const std::function<bool()>& check) {
  return RunInChild([&] {
    if (::geteuid() != 0) return check();
    if (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0) {
      throw std::bad_exception();
    }
    return check();
  });
}

/// No file can grow over `bytes`, as on a disk that is full.
inline ChildResult RunWithFullDisk(rlim_t bytes, const std::function<bool()>& check) {
  return RunInChild([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::bad_exception();
    return check();
  });
}

}  // namespace platform::posix
