#include "platform/win32/media/opening.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

#include <condition_variable>
#include <mutex>
#include <utility>

#include "platform/win32/base/wide.h"
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

enum class OpeningKind { kAddress, kByteStream };

/// Is called by the framework on a thread of its own once the opening is over; one that nobody waits for any
/// more is cleaned up there.
class OpeningEnd final : public ::IMFAsyncCallback {
 public:
  OpeningEnd(::IMFSourceResolver& resolver, OpeningKind kind) : resolver_(&resolver), kind_(kind) {
    resolver.AddRef();
  }
  virtual ~OpeningEnd() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    const bool known = IsEqualIID(iid, __uuidof(::IMFAsyncCallback)) || IsEqualIID(iid, __uuidof(::IUnknown));
    *out = known ? static_cast<::IMFAsyncCallback*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }
  HRESULT STDMETHODCALLTYPE GetParameters(DWORD*, DWORD*) override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE Invoke(::IMFAsyncResult* asked) override {
    MF_OBJECT_TYPE type = MF_OBJECT_INVALID;
    ComPointer<::IUnknown> object;
    const HRESULT result = kind_ == OpeningKind::kAddress
                               ? resolver_->EndCreateObjectFromURL(asked, &type, object.Receive())
                               : resolver_->EndCreateObjectFromByteStream(asked, &type, object.Receive());
    const std::unique_lock lock(mutex_);
    over_ = true;
    if (given_up_) {
      ShutDownSource(object.Get());
      return S_OK;
    }
    opened_ = {result, type, std::move(object)};
    changed_.notify_all();
    return S_OK;
  }

  bool WaitSlice() {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, kSlice, [this] { return over_; });
  }
  OpenedObject Take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(opened_, {});
  }
  void GiveUp() {
    const std::lock_guard lock(mutex_);
    given_up_ = true;
    ShutDownSource(opened_.object.Get());
    opened_ = {};
  }

 private:
  LONG references_ = 1;
  const ComPointer<::IMFSourceResolver> resolver_;
  const OpeningKind kind_;
  std::mutex mutex_;
  std::condition_variable changed_;
  OpenedObject opened_;
  bool over_ = false;
  bool given_up_ = false;
};

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
  const ComPointer<OpeningEnd> end(new OpeningEnd(resolver, OpeningKind::kAddress));
  ComPointer<::IUnknown> cookie;
  const HRESULT begun = resolver.BeginCreateObjectFromURL(Wide(address), static_cast<DWORD>(flags), nullptr,
                                                          cookie.Receive(), end.Get(), nullptr);
  return Await(resolver, *end.Get(), begun, cookie.Get(), wait, nullptr);
}

OpenedObject OpenByteStream(::IMFSourceResolver& resolver, ::IMFByteStream& stream, const Text& address,
                            std::int32_t flags, const OpeningWait& wait,
                            const std::function<void()>& given_up) {
  const ComPointer<OpeningEnd> end(new OpeningEnd(resolver, OpeningKind::kByteStream));
  ComPointer<::IUnknown> cookie;
  const HRESULT begun = resolver.BeginCreateObjectFromByteStream(
      &stream, Wide(address), static_cast<DWORD>(flags), nullptr, cookie.Receive(), end.Get(), nullptr);
  return Await(resolver, *end.Get(), begun, cookie.Get(), wait, given_up);
}

}  // namespace platform::win32
