#pragma once
// Waits for the system's resolver to open an address or a byte stream, without blocking the window. Not for
// what to open or what the outcome means (media/win32_media.h).

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

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
  bool endless = false;  ///< a source without a length; said by whoever opens addresses
};

class OpeningEnd;

/// An opening that was begun. Dropping it gives it up.
class BegunOpening {
 public:
  static BegunOpening OfAddress(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags);
  static BegunOpening OfByteStream(::IMFSourceResolver& resolver, ::IMFByteStream& stream,
                                   const Text& address, std::int32_t flags);
  ~BegunOpening();
  BegunOpening(BegunOpening&&) noexcept;
  BegunOpening& operator=(BegunOpening&&) = delete;

  [[nodiscard]] bool IsOver() const;
  /// The same after a wait of a few milliseconds.
  [[nodiscard]] bool WaitSlice() const;
  /// Once, when it is over.
  OpenedObject Take();
  /// Ends in the background; a source that it still makes is shut down there.
  void GiveUp();

 private:
  explicit BegunOpening(::IMFSourceResolver& resolver);

  ComPointer<::IMFSourceResolver> resolver_;
  std::shared_ptr<OpeningEnd> end_;
  HResult begun_ = kEFail;
  ComPointer<::IUnknown> cookie_;
};

/// Waits for it; one that fails to come in time is given up.
OpenedObject OpenAddress(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                         const OpeningWait& wait);
/// `given_up` is called before a wait that failed returns; it must end reads of the stream that would go on
/// waiting.
OpenedObject OpenByteStream(::IMFSourceResolver& resolver, ::IMFByteStream& stream, const Text& address,
                            std::int32_t flags, const OpeningWait& wait,
                            const std::function<void()>& given_up);

}  // namespace platform::win32
