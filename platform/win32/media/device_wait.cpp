#include "platform/win32/media/device_wait.h"

namespace platform::win32 {

void DeviceWait::Started(Clock::time_point now) { steady_from_ = now + kSteady; }

void DeviceWait::Lost(Clock::time_point now) { next_look_ = now + (now < steady_from_ ? kRareLook : kLook); }

void DeviceWait::Looked(Clock::time_point now) { next_look_ = now + kLook; }

}  // namespace platform::win32
