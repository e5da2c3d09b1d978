#pragma once
// Results of operations that only this adapter gives, besides those of ports/interface_call.h.
// Not the choice among them; open_error.h turns what GStreamer says into a result.
//
// Numbers: the public documentation of Media Foundation (mferror.h) and of Windows (winerror.h).

#include "ports/interface_call.h"

namespace platform::gstreamer {

inline constexpr HResult kEPointer = static_cast<HResult>(0x80004003u);
inline constexpr HResult kEAccessDenied = static_cast<HResult>(0x80070005u);
inline constexpr HResult kENotFound = static_cast<HResult>(0x80070490u);
inline constexpr HResult kClassNotRegistered = static_cast<HResult>(0x80040154u);
inline constexpr HResult kMfEPlatformNotInitialized = static_cast<HResult>(0xC00D36B0u);
inline constexpr HResult kMfEInvalidRequest = static_cast<HResult>(0xC00D36B2u);
inline constexpr HResult kMfENotInitialized = static_cast<HResult>(0xC00D36B6u);
inline constexpr HResult kMfEUnsupportedService = static_cast<HResult>(0xC00D36BAu);
inline constexpr HResult kMfEUnsupportedScheme = static_cast<HResult>(0xC00D36C3u);
inline constexpr HResult kMfEAttributeNotFound = static_cast<HResult>(0xC00D36E6u);
inline constexpr HResult kMfEPropertyNotFound = static_cast<HResult>(0xC00D3E8Du);
inline constexpr HResult kMfEShutdown = static_cast<HResult>(0xC00D3E85u);
inline constexpr HResult kMfENetTimeout = static_cast<HResult>(0xC00D4278u);

}  // namespace platform::gstreamer
