#include "platform/win32/media/device_search.h"

#include "platform/win32/base/windows_api.h"

#include <objbase.h>

#include "platform/win32/base/detached_thread.h"

namespace platform::win32 {

void DeviceSearch::Begin() {
  if (state_) return;
  const auto state = std::make_shared<State>();
  const bool started = StartDetached([state, look = look_] {
    const bool mine = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
    const bool found = look();
    if (mine) CoUninitialize();
    state->stage = found ? Stage::kFound : Stage::kFoundNone;
  });
  if (!started) state->stage = Stage::kFoundNone;
  state_ = state;
  unwanted_ = false;
}

std::optional<bool> DeviceSearch::Take() {
  if (!state_ || state_->stage == Stage::kUnderWay) return std::nullopt;
  const bool found = state_->stage == Stage::kFound;
  state_.reset();
  if (unwanted_) return std::nullopt;
  return found;
}

void DeviceSearch::Forget() { unwanted_ = true; }

}  // namespace platform::win32
