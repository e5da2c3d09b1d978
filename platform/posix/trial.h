#pragma once
// Tries something out in a copy of the process, because it may end the process or never return.
// Not for work whose results are needed.

#include <chrono>
#include <functional>

namespace platform::posix {

/// True when `action` returns true in the copy within `limit`. A copy that ends in another way or takes
/// longer (it is then killed) gives false, and so does a system that cannot make a copy. What the copy prints
/// is dropped; only its answer comes back. Only while no other thread runs.
bool SucceedsInCopy(const std::function<bool()>& action, std::chrono::milliseconds limit);

}  // namespace platform::posix
