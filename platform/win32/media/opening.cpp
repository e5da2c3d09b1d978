#include "platform/win32/media/opening.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/media/async_callback.h"
#include "platform/win32/media/locks.h"
#include "platform/win32/media/media_results.h"

namespace platform::win32 {
namespace {

/// The window is painted, and input asked for, this often.
constexpr std::chrono::milliseconds kSlice{10};

void ShutDownSource(::IUnknown* object) {
  ComPointer<::IMFMediaSource> source;
  if (object == nullptr) return;
  if (object->QueryInterface(__uuidof(::IMFMediaSource), source.ReceiveAny()) == S_OK) source->Shutdown();
}

/// One opening. It is ended on a thread of the framework; what nobody waits for any more is shut down there.
class OpeningEnd {
 public:
  void Over(OpenedObject opened) {
    {
      const Lock lock(mutex_);
      over_ = true;
      if (!given_up_) std::swap(opened_, opened);
    }
    changed_.notify_all();
    ShutDownSource(opened.object.Get());
  }
  bool WaitSlice() {
    Lock lock(mutex_);
    return changed_.wait_for(lock, kSlice, [this] { return over_; });
  }
  OpenedObject Take() {
    const Lock lock(mutex_);
    return std::exchange(opened_, {});
  }
  void GiveUp() {
    OpenedObject late;
    {
      const Lock lock(mutex_);
      given_up_ = true;
      std::swap(opened_, late);
    }
    ShutDownSource(late.object.Get());
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  OpenedObject opened_;
  bool over_ = false;
  bool given_up_ = false;
};

using EndOperation = HRESULT (STDMETHODCALLTYPE ::IMFSourceResolver::*)(::IMFAsyncResult*, MF_OBJECT_TYPE*,
                                                                        ::IUnknown**);

/// Called when `end`, an operation of the resolver, has what was opened.
ComPointer<::IMFAsyncCallback> Ending(::IMFSourceResolver& resolver, EndOperation end,
                                      std::shared_ptr<OpeningEnd> opening) {
  resolver.AddRef();
  const ComPointer<::IMFSourceResolver> kept(&resolver);
  return MakeAsyncCallback([kept, end, opening = std::move(opening)](::IMFAsyncResult& asked) {
    MF_OBJECT_TYPE type = MF_OBJECT_INVALID;
    ComPointer<::IUnknown> object;
    const HRESULT result = (kept.Get()->*end)(&asked, &type, object.Receive());
    opening->Over({result, type, std::move(object)});
  });
}

OpenedObject Await(::IMFSourceResolver& resolver, OpeningEnd& end, HRESULT begun, ::IUnknown* cookie,
                   const OpeningWait& wait, const std::function<void()>& given_up) {
  if (begun != S_OK) return {begun, kMfObjectInvalid, {}};
  const HResult waited = wait.Until([&end] { return end.WaitSlice(); });
  if (waited == kSOk) return end.Take();
  end.GiveUp();
  if (given_up) given_up();
  if (cookie != nullptr) resolver.CancelObjectCreation(cookie);
  return {waited, kMfObjectInvalid, {}};
}

}  // namespace

HResult OpeningWait::Until(const std::function<bool()>& done) const {
  while (!done()) {
    loop.ProcessPaintMessages();
    if (loop.InputEndsWait()) return kErrorCancelled;
    if (std::chrono::steady_clock::now() >= deadline) return kMfENetTimeout;
  }
  return kSOk;
}

OpenedObject OpenAddress(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                         const OpeningWait& wait) {
  const auto end = std::make_shared<OpeningEnd>();
  const auto ending = Ending(resolver, &::IMFSourceResolver::EndCreateObjectFromURL, end);
  ComPointer<::IUnknown> cookie;
  const HRESULT begun = resolver.BeginCreateObjectFromURL(Wide(address), static_cast<DWORD>(flags), nullptr,
                                                          cookie.Receive(), ending.Get(), nullptr);
  return Await(resolver, *end, begun, cookie.Get(), wait, nullptr);
}

OpenedObject OpenByteStream(::IMFSourceResolver& resolver, ::IMFByteStream& stream, const Text& address,
                            std::int32_t flags, const OpeningWait& wait,
                            const std::function<void()>& given_up) {
  const auto end = std::make_shared<OpeningEnd>();
  const auto ending = Ending(resolver, &::IMFSourceResolver::EndCreateObjectFromByteStream, end);
  ComPointer<::IUnknown> cookie;
  const HRESULT begun = resolver.BeginCreateObjectFromByteStream(
      &stream, Wide(address), static_cast<DWORD>(flags), nullptr, cookie.Receive(), ending.Get(), nullptr);
  return Await(resolver, *end, begun, cookie.Get(), wait, given_up);
}

}  // namespace platform::win32
