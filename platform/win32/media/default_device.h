#pragma once
// Whether the system has a device that takes sound. Not when to ask (media/device_wait.h).

namespace platform::win32 {

/// Asks for the default device and opens it for a moment, without playing: a system may name a device that is
/// gone. May take seconds. The caller's thread has initialised COM.
bool DefaultDeviceTakesSound();

}  // namespace platform::win32
