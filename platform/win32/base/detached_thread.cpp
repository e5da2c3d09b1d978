#include "platform/win32/base/detached_thread.h"

#include <process.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace platform::win32 {
namespace {

using Work = std::function<void()>;

// The system closes the handle of a thread that is started in this way.
void Run(void* given) {
  const std::unique_ptr<Work> work(static_cast<Work*>(given));
  (*work)();
}

}  // namespace

bool StartDetached(std::function<void()> work) {
  auto given = std::make_unique<Work>(std::move(work));
  if (::_beginthread(&Run, 0, given.get()) == static_cast<std::uintptr_t>(-1)) return false;
  static_cast<void>(given.release());  // the thread's now
  return true;
}

}  // namespace platform::win32
