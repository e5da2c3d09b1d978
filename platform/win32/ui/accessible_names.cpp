#include "platform/win32/ui/accessible_names.h"

#include "platform/win32/base/windows_api.h"

#include <initguid.h>
#include <objbase.h>
#include <oleacc.h>

#include "platform/win32/base/wide.h"

namespace platform::win32 {

AccessibleNames::AccessibleNames() {
  ::CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                     service_.ReceiveAny());
}

AccessibleNames::~AccessibleNames() = default;

void AccessibleNames::Name(HWND control, const Text& name) {
  if (service_)
    service_->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                             Wide(name));
}

void AccessibleNames::Forget(HWND control) {
  MSAAPROPID name = PROPID_ACC_NAME;
  if (service_) service_->ClearHwndProps(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &name, 1);
}

}  // namespace platform::win32
