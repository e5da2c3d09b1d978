#pragma once
// Results of the media framework that the adapter itself gives or asks about. Not the results that the
// program knows (ports/interface_call.h).

#include <cstdint>

#include "ports/interface_call.h"

namespace platform::win32 {

inline constexpr HResult kEAccessDenied = static_cast<HResult>(0x80070005u);
inline constexpr HResult kMfEUnsupportedScheme = static_cast<HResult>(0xC00D36C3u);
inline constexpr HResult kMfEBadStartupVersion = static_cast<HResult>(0xC00D36E3u);
inline constexpr HResult kMfEAttributeNotFound = static_cast<HResult>(0xC00D36E6u);
inline constexpr HResult kMfETopologyCodecNotFound = static_cast<HResult>(0xC00D5212u);
inline constexpr HResult kMfENoAudioPlaybackDevice = static_cast<HResult>(0xC00D4E84u);
inline constexpr HResult kMfEAudioPlaybackDeviceInvalidated = static_cast<HResult>(0xC00D4E86u);
inline constexpr HResult kMfEAudioServiceNotRunning = static_cast<HResult>(0xC00D4E87u);
/// AUDCLNT_E_DEVICE_INVALIDATED, _ENDPOINT_CREATE_FAILED and _SERVICE_NOT_RUNNING.
inline constexpr HResult kAudioDeviceInvalidated = static_cast<HResult>(0x88890004u);
inline constexpr HResult kAudioEndpointCreateFailed = static_cast<HResult>(0x8889000Fu);
inline constexpr HResult kAudioServiceNotRunning = static_cast<HResult>(0x88890010u);
inline constexpr HResult kMfENetWrite = static_cast<HResult>(0xC00D4269u);
inline constexpr HResult kMfENetRead = static_cast<HResult>(0xC00D426Au);
/// ERROR_INTERNET_NAME_NOT_RESOLVED, _CONNECTION_ABORTED and _CONNECTION_RESET as results.
inline constexpr HResult kInternetNameNotResolved = static_cast<HResult>(0x80072EE7u);
inline constexpr HResult kInternetConnectionAborted = static_cast<HResult>(0x80072EFEu);
inline constexpr HResult kInternetConnectionReset = static_cast<HResult>(0x80072EFFu);
inline constexpr HResult kMfENetTimeout = static_cast<HResult>(0xC00D4278u);

/// What the network or a server has done, as opposed to a device, a decoder or the data: a result of the
/// framework's network sources, of Windows' sockets or Internet libraries, or a status of HTTP.
constexpr bool IsNetworkFailure(HResult result) {
  const auto code = static_cast<std::uint32_t>(result);
  const auto within = [code](std::uint32_t first, std::uint32_t last) {
    return code >= first && code <= last;
  };
  constexpr std::uint32_t kNetnameDeleted = 0x80070040u;
  return within(0xC00D4268u, 0xC00D4295u) || within(0x80072710u, 0x80072F9Cu) ||
         within(0x80190000u, 0x8019FFFFu) || code == kNetnameDeleted;
}

}  // namespace platform::win32
