#pragma once
// The room's rule for locks, and the type by which its files take them. Not for waiting.

#include <mutex>

namespace platform::win32 {

/// While a lock of this room is held, nothing foreign is called: no object of the system, not even to release
/// the last reference to it, and no function that somebody passed in. Each of these may wait for a thread
/// that wants the same lock. What such a call needs is copied under the lock, and the call comes after it.
///
/// A live stream may ask its connection and its buffer while it is locked; these two ask nobody.
using Lock = std::unique_lock<std::mutex>;

}  // namespace platform::win32
