#pragma once
// Waits for the system's resolver to open an address or a byte stream, without blocking the window. Not for
// what to open or what the outcome means (media/win32_media.h).

#include <chrono>
#include <cstdint>
#include <functional>

#include "platform/win32/base/com_pointer.h"
#include "ports/interface_call.h"
#include "ports/media_framework.h"
#include "ports/message_loop.h"
#include "ports/text.h"

struct IMFByteStream;
struct IMFSourceResolver;
struct IUnknown;

namespace platform::win32 {

/// How long one opening may take, all its steps together, and what ends it before.
struct OpeningWait {
  MessageLoop& loop;
  std::chrono::steady_clock::time_point deadline;

  /// Paints until `done`; S_OK then, else kErrorCancelled for input that ends a wait, or a time-out. `done`
  /// may wait for a few milliseconds.
  HResult Until(const std::function<bool()>& done) const;
};

struct OpenedObject {
  HResult result = kEFail;
  std::int32_t type = kMfObjectInvalid;
  ComPointer<::IUnknown> object;
};

/// An opening that was given up ends in the background; a source that it still makes is shut down there.
OpenedObject OpenAddress(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                         const OpeningWait& wait);
/// `given_up` is called before a wait that failed returns; it must end reads of the stream that would go on
/// waiting.
OpenedObject OpenByteStream(::IMFSourceResolver& resolver, ::IMFByteStream& stream, const Text& address,
                            std::int32_t flags, const OpeningWait& wait,
                            const std::function<void()>& given_up);

}  // namespace platform::win32
