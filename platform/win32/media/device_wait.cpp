#include "platform/win32/media/device_wait.h"

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
  next_look_ = now + kLook;
  return now >= next_try_;
}

}  // namespace platform::win32
