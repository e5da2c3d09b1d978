#pragma once
// COM objects behind handles, as tests of calls by slot use them. Not the program's objects.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/win32/media/com_calls.h"
#include "platform/win32/media/handle_table.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/slot_object.h"

namespace platform::win32 {

struct CallRig : testing::Test {
  InterfaceHandle Enter(SlotObject& of, Interface seen_as) { return table.Enter(of.Reference(), seen_as); }
  template <typename... Arguments>
  std::optional<HResult> Call(InterfaceHandle handle, const Operation<Arguments...>& operation,
                              std::vector<Argument> list) {
    return calls.DispCallFunc(handle, operation.interface_id, operation.slot, list);
  }

  // Declared before the table, which drops its references in the end.
  SlotObject object;
  SlotObject other;
  HandleTable table;
  ComCalls calls{table};
};

inline HRESULT STDMETHODCALLTYPE TakeFloat(SlotObject* self, float value) {
  self->number = value;
  return self->result;
}
inline HRESULT STDMETHODCALLTYPE GiveGuid(SlotObject* self, GUID* guid) {
  *guid = self->guid;
  return self->result;
}
inline HRESULT STDMETHODCALLTYPE TakeLong(SlotObject* self, LONG value) {
  self->calls.push_back(std::to_string(value));
  return self->result;
}

}  // namespace platform::win32
