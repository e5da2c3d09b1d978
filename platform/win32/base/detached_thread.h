#pragma once
// Starts a thread that nobody waits for. Not a thread that is joined; that is std::thread's.

#include <functional>

namespace platform::win32 {

/// Runs `work` on a thread of its own, which must not throw. False when the system has no more threads;
/// `work` is not run then. In place of std::thread::detach: with mingw-w64's library of threads a detached
/// one was seen to start with the argument of another, under load.
bool StartDetached(std::function<void()> work);

}  // namespace platform::win32
