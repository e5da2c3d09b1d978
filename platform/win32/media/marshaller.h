#pragma once
// Takes an argument list to an operation of a COM object and its results back. Not for choosing the operation
// or checking the object (media/win32_media.h).

#include <optional>
#include <span>

#include "platform/win32/media/handle_table.h"
#include "platform/win32/media/operation_shapes.h"
#include "ports/interface_call.h"

namespace platform::win32 {

/// Calls the operation `shape` of `object`. Values go by value, texts as wide strings, GUIDs as they are; a
/// handle that is passed becomes its object, as the interface that the operation takes. What the operation
/// writes reaches the caller's variables on S_OK only: new objects as handles of `table`. Nothing when the
/// arguments are of other types, or the system refuses the call itself; E_INVALIDARG for an unknown handle
/// among the arguments.
std::optional<HResult> CallOperation(HandleTable& table, ::IUnknown* object, const OperationShape& shape,
                                     std::span<const Argument> arguments);

}  // namespace platform::win32
