#pragma once
// The table behind the 32-bit handles: each owns one reference to a COM object and knows through which
// interface it is seen. Not for calling the objects (media/marshaller.h).

#include <cstdint>
#include <map>
#include <optional>

#include "platform/win32/base/com_pointer.h"
#include "ports/interface_call.h"

struct IUnknown;

namespace platform::win32 {

/// An object as one of its interfaces; every interface begins with IUnknown's operations.
struct ComView {
  ComPointer<::IUnknown> object;
  Interface interface_id = Interface::kUnknown;
};

/// Handles are not used twice, so one that was released is not taken for a newer object's.
class HandleTable {
 public:
  /// Takes over the caller's reference. `pointer` is of interface `interface_id`; null gives no handle.
  InterfaceHandle Enter(void* pointer, Interface interface_id);
  InterfaceHandle Enter(ComPointer<::IUnknown> object, Interface interface_id);
  /// A copy, so that the object outlives its own call whatever happens to the handle meanwhile; nothing for
  /// an unknown handle.
  [[nodiscard]] std::optional<ComView> Find(InterfaceHandle handle) const;
  /// The first object that is seen through that interface; null for none.
  [[nodiscard]] ComPointer<::IUnknown> Seen(Interface interface_id) const;
  /// Puts `object` in the place of every object that is seen through that interface.
  void Replace(Interface interface_id, const ComPointer<::IUnknown>& object);
  /// Drops the entry and its reference; false for an unknown handle.
  bool Release(InterfaceHandle handle);
  [[nodiscard]] std::size_t Count() const { return entries_.size(); }

 private:
  std::map<std::uint32_t, ComView> entries_;
  std::uint32_t last_ = 0;
};

}  // namespace platform::win32
