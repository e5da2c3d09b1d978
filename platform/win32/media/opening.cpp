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

}  // namespace

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
  bool IsOver() {
    const Lock lock(mutex_);
    return over_;
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

namespace {

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

OpenedObject Await(BegunOpening opening, const OpeningWait& wait, const std::function<void()>& given_up) {
  const HResult waited = wait.Until([&opening] { return opening.WaitSlice(); });
  if (waited == kSOk) return opening.Take();
  if (given_up) given_up();
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

BegunOpening::BegunOpening(::IMFSourceResolver& resolver)
    : resolver_(&resolver), end_(std::make_shared<OpeningEnd>()) {
  resolver.AddRef();
}

BegunOpening::BegunOpening(BegunOpening&&) noexcept = default;

BegunOpening::~BegunOpening() { GiveUp(); }

BegunOpening BegunOpening::OfAddress(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags) {
  BegunOpening opening(resolver);
  const auto ending = Ending(resolver, &::IMFSourceResolver::EndCreateObjectFromURL, opening.end_);
  opening.begun_ = resolver.BeginCreateObjectFromURL(Wide(address), static_cast<DWORD>(flags), nullptr,
                                                     opening.cookie_.Receive(), ending.Get(), nullptr);
  return opening;
}

BegunOpening BegunOpening::OfByteStream(::IMFSourceResolver& resolver, ::IMFByteStream& stream,
                                        const Text& address, std::int32_t flags) {
  BegunOpening opening(resolver);
  const auto ending = Ending(resolver, &::IMFSourceResolver::EndCreateObjectFromByteStream, opening.end_);
  opening.begun_ =
      resolver.BeginCreateObjectFromByteStream(&stream, Wide(address), static_cast<DWORD>(flags), nullptr,
                                               opening.cookie_.Receive(), ending.Get(), nullptr);
  return opening;
}

bool BegunOpening::IsOver() const { return begun_ != kSOk || end_->IsOver(); }

bool BegunOpening::WaitSlice() const { return begun_ != kSOk || end_->WaitSlice(); }

OpenedObject BegunOpening::Take() {
  const auto end = std::move(end_);
  if (begun_ != kSOk) return {begun_, kMfObjectInvalid, {}};
  return end->Take();
}

void BegunOpening::GiveUp() {
  const auto end = std::move(end_);
  if (!end) return;
  end->GiveUp();
  if (cookie_) resolver_->CancelObjectCreation(cookie_.Get());
}

OpenedObject OpenAddress(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                         const OpeningWait& wait) {
  return Await(BegunOpening::OfAddress(resolver, address, flags), wait, nullptr);
}

OpenedObject OpenByteStream(::IMFSourceResolver& resolver, ::IMFByteStream& stream, const Text& address,
                            std::int32_t flags, const OpeningWait& wait,
                            const std::function<void()>& given_up) {
  return Await(BegunOpening::OfByteStream(resolver, stream, address, flags), wait, given_up);
}

}  // namespace platform::win32
