#include "platform/win32/media/async_callback.h"

#include "platform/win32/base/windows_api.h"

#include <mfobjects.h>

#include <utility>

namespace platform::win32 {
namespace {

class AsyncCallback final : public ::IMFAsyncCallback {
 public:
  explicit AsyncCallback(std::function<void(::IMFAsyncResult&)> called) : called_(std::move(called)) {}
  virtual ~AsyncCallback() = default;

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

  HRESULT STDMETHODCALLTYPE Invoke(::IMFAsyncResult* result) override {
    called_(*result);
    return S_OK;
  }

 private:
  LONG references_ = 1;
  const std::function<void(::IMFAsyncResult&)> called_;
};

}  // namespace

ComPointer<::IMFAsyncCallback> MakeAsyncCallback(std::function<void(::IMFAsyncResult&)> called) {
  return ComPointer<::IMFAsyncCallback>(new AsyncCallback(std::move(called)));
}

}  // namespace platform::win32
