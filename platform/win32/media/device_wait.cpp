#include "platform/win32/media/device_wait.h"

#include <algorithm>

namespace platform::win32 {

void DeviceWait::Started(Clock::time_point now) { steady_from_ = now + kSteady; }

void DeviceWait::Lost(Clock::time_point now) {
  next_look_ = now + kLook;
  next_try_ = now < steady_from_ ? now + kRareTry : now;
}

void DeviceWait::FoundNone(Clock::time_point now) {
  next_look_ = now + kLook;
  next_try_ = now;
}

bool DeviceWait::Found(Clock::time_point now) {
  const bool may_try = now >= next_try_;
  next_look_ = may_try ? now + kLook : std::min(now + kRareLook, next_try_);
  return may_try;
}

}  // namespace platform::win32
