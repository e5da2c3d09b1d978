#pragma once
// Adapter: the dynamic call of COM objects behind handles, and the creation of objects by class. Not the
// media framework's own functions (media/win32_media.h).

#include <cstdint>
#include <optional>
#include <span>

#include "platform/win32/media/handle_table.h"
#include "ports/interface_call.h"

namespace platform::win32 {

/// Objects of any apartment; the caller has initialised COM on its thread.
class ComCalls : public InterfaceCalls {
 public:
  explicit ComCalls(HandleTable& table) : table_(table) {}

  /// Only operations of ports/media_interfaces.h can be called, and only through the interface that the
  /// handle is of.
  std::optional<HResult> DispCallFunc(InterfaceHandle object, Interface interface_id, std::int32_t slot,
                                      std::span<const Argument> arguments) override;
  HResult CoCreateInstance(const Guid& clsid, InterfaceHandle outer, std::int32_t class_context,
                           const Guid& iid, InterfaceHandle& out) override;

 private:
  HandleTable& table_;
};

}  // namespace platform::win32
