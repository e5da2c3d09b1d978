#pragma once
// Runs a piece of a test in a process of its own: as a user without rights, with a full disk, or where files
// have no owners and permissions.
// Not for starting programs.

#include <grp.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <functional>

namespace platform::posix {

/// The result of a check in the child.
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

/// The system refuses to change the owner and the permissions of an open file, as on a memory stick whose
/// file system has neither.
inline ChildResult RunWithoutFilePermissions(const std::function<bool()>& check) {
  return RunInChild([&] {
    std::array<sock_filter, 5> rules = {{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                                         BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_fchmod, 1, 0),
                                         BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_fchown, 0, 1),
                                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
                                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)}};
    const sock_fprog filter{static_cast<unsigned short>(rules.size()), rules.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) throw std::bad_exception();
    if (::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0) throw std::bad_exception();
    if (::fchmod(STDERR_FILENO, 0600) == 0 || errno != EPERM) throw std::bad_exception();
    return check();
  });
}

}  // namespace platform::posix
