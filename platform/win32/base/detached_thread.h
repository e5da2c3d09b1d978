#pragma once
// Starts a thread that nobody waits for. Not a thread that is joined; that is std::thread's.

#include <process.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace platform::win32 {

/// Runs `work` on a thread of its own, which must not throw. False when the system has no more threads;
/// `work` is not run then. In place of std::thread::detach, which is not safe with mingw-w64's library of
/// threads: when a thread is detached while it ends, its record is released twice, and two later threads get
/// the same one.
inline bool StartDetached(std::function<void()> work) {
  auto given = std::make_unique<std::function<void()>>(std::move(work));
  const auto run = [](void* taken) {
    const std::unique_ptr<std::function<void()>> mine(static_cast<std::function<void()>*>(taken));
    (*mine)();
  };
  if (::_beginthread(run, 0, given.get()) == static_cast<std::uintptr_t>(-1)) return false;
  static_cast<void>(given.release());  // the thread's now
  return true;
}

}  // namespace platform::win32
