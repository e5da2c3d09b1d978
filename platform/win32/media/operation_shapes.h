#pragma once
// What the marshaller must know about an operation beyond its arguments' types: which interfaces its handles
// are of, and which way a property value goes. Not the call (media/marshaller.h).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "ports/interface_call.h"

namespace platform::win32 {

enum class ValueDirection : std::uint8_t { kIn, kOut };

struct OperationShape {
  Interface interface_id = Interface::kUnknown;
  std::int32_t slot = 0;
  /// The alternatives of `Argument`, in order.
  std::vector<std::size_t> types;
  /// Of the handles among the arguments, in order, both those that are passed and those that are received.
  /// kUnknown takes any object; a received kUnknown beside a GUID is of the interface that the GUID names.
  std::vector<Interface> handles;
  ValueDirection values = ValueDirection::kOut;
};

/// Whether the list has the length and the types of the operation.
bool Matches(const OperationShape& shape, std::span<const Argument> list);

/// Every operation of ports/media_interfaces.h; null for any other slot.
const OperationShape* FindShape(Interface interface_id, std::int32_t slot);

/// The interface that an IID names; nothing for one that the program does not call.
std::optional<Interface> InterfaceOf(const Guid& iid);

/// The IID of an interface.
Guid IidOf(Interface interface_id);

}  // namespace platform::win32
