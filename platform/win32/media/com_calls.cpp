#include "platform/win32/media/com_calls.h"

#include "platform/win32/base/windows_api.h"

#include <objbase.h>

#include <bit>

#include "platform/win32/media/marshaller.h"
#include "platform/win32/media/operation_shapes.h"
#include "ports/media_interfaces.h"

namespace platform::win32 {

std::optional<HResult> ComCalls::DispCallFunc(InterfaceHandle object, Interface interface_id,
                                              std::int32_t slot, std::span<const Argument> arguments) {
  const auto view = table_.Find(object);
  if (!view) return std::nullopt;
  // A slot is a number only: in another interface's table it is another operation with other arguments.
  const bool seen_so = interface_id == Interface::kUnknown || interface_id == view->interface_id;
  const OperationShape* const shape = seen_so ? FindShape(interface_id, slot) : nullptr;
  if (shape == nullptr || !Matches(*shape, arguments)) return std::nullopt;
  const bool release = interface_id == Interface::kUnknown && slot == platform::IUnknown::Release.slot;
  if (!release) return CallOperation(table_, view->object.Get(), *shape, arguments);
  table_.Release(object);
  return kSOk;
}

HResult ComCalls::CoCreateInstance(const Guid& clsid, InterfaceHandle outer, std::int32_t class_context,
                                   const Guid& iid, InterfaceHandle& out) {
  const auto aggregate = table_.Find(outer);
  if (!aggregate && outer != InterfaceHandle::kNone) return kEInvalidArg;
  void* created = nullptr;
  const HRESULT result =
      ::CoCreateInstance(std::bit_cast<CLSID>(clsid), aggregate ? aggregate->object.Get() : nullptr,
                         static_cast<DWORD>(class_context), std::bit_cast<IID>(iid), &created);
  if (result == S_OK) out = table_.Enter(created, InterfaceOf(iid).value_or(Interface::kUnknown));
  return result;
}

}  // namespace platform::win32
