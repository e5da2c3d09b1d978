#include "platform/win32/ui/annotations.h"

#include "platform/win32/base/windows_api.h"

#include <initguid.h>
#include <objbase.h>
#include <oleacc.h>

#include <array>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

constexpr auto kClient = static_cast<DWORD>(OBJID_CLIENT);
// Public reference: the system's documentation of UI Automation, "LiveSetting"; the compiler's headers lack
// both.
constexpr GUID kLiveSetting = {0xc12bcd8e, 0x2a8e, 0x4950, {0x8a, 0xe7, 0x36, 0x25, 0x11, 0x1d, 0x58, 0xeb}};
constexpr LONG kPolite = 1;

}  // namespace

Annotations::Annotations() {
  ::CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                     service_.ReceiveAny());
}

Annotations::~Annotations() = default;

void Annotations::Name(HWND control, const Text& name) {
  if (service_) service_->SetHwndPropStr(control, kClient, CHILDID_SELF, PROPID_ACC_NAME, Wide(name));
}

void Annotations::MakeLive(HWND control) {
  VARIANT politeness{};
  V_VT(&politeness) = VT_I4;
  V_I4(&politeness) = kPolite;
  if (service_) service_->SetHwndProp(control, kClient, CHILDID_SELF, kLiveSetting, politeness);
}

void Annotations::Forget(HWND control) {
  const std::array<MSAAPROPID, 2> all = {PROPID_ACC_NAME, kLiveSetting};
  if (service_)
    service_->ClearHwndProps(control, kClient, CHILDID_SELF, all.data(), static_cast<int>(all.size()));
}

}  // namespace platform::win32
