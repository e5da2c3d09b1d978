#pragma once
// A disk that is full for a while: no file of this process can grow. Not a file system.

#include <signal.h>
#include <sys/resource.h>

namespace test_support {

/// From construction to destruction every write to a file fails. Nothing may be printed meanwhile, because
/// the test's own output can be a file too.
class FullDisk {
 public:
  FullDisk() : handler_(::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    rlimit none = before_;
    none.rlim_cur = 0;
    ::setrlimit(RLIMIT_FSIZE, &none);
  }
  ~FullDisk() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    ::signal(SIGXFSZ, handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  void (*handler_)(int);
  rlimit before_{};
};

}  // namespace test_support
