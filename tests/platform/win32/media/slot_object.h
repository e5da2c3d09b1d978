#pragma once
// A COM object whose table of operations a test fills slot by slot. Not a stand-in for any object of the
// system.

#include "platform/win32/base/windows_api.h"

#include <unknwn.h>

#include <array>
#include <string>
#include <vector>

namespace platform::win32 {

/// Lives as long as the test; `references` counts what is held of it.
struct SlotObject {
  SlotObject() {
    operations.fill(reinterpret_cast<void*>(&Unexpected));
    operations[0] = reinterpret_cast<void*>(&Query);
    operations[1] = reinterpret_cast<void*>(&Add);
    operations[2] = reinterpret_cast<void*>(&Drop);
  }
  SlotObject(const SlotObject&) = delete;
  SlotObject& operator=(const SlotObject&) = delete;

  template <typename Function>
  void Answer(std::size_t slot, Function* function) {
    operations[slot] = reinterpret_cast<void*>(function);
  }
  ::IUnknown* AsUnknown() { return reinterpret_cast<::IUnknown*>(this); }
  /// One more reference, for a table to own.
  ::IUnknown* Reference() {
    ++references;
    return AsUnknown();
  }

  static HRESULT STDMETHODCALLTYPE Unexpected(SlotObject*) { return E_NOTIMPL; }
  static HRESULT STDMETHODCALLTYPE Query(SlotObject* self, const IID* iid, void** out) {
    self->queried.push_back(*iid);
    if (!IsEqualIID(*iid, self->offered)) {
      *out = nullptr;
      return E_NOINTERFACE;
    }
    *out = self->Reference();
    return S_OK;
  }
  static ULONG STDMETHODCALLTYPE Add(SlotObject* self) { return static_cast<ULONG>(++self->references); }
  static ULONG STDMETHODCALLTYPE Drop(SlotObject* self) { return static_cast<ULONG>(--self->references); }

  /// First, as in every COM object.
  void** table = operations.data();
  std::array<void*, 64> operations;
  int references = 0;
  IID offered{};
  std::vector<IID> queried;

  // What the operations of a test were given, and give back.
  HRESULT result = S_OK;
  std::vector<std::string> calls;
  float number = 0;
  std::wstring text;
  GUID guid{};
  void* pointer = nullptr;
};

}  // namespace platform::win32
