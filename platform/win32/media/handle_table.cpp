#include "platform/win32/media/handle_table.h"

#include "platform/win32/base/windows_api.h"

#include <unknwn.h>

#include <utility>

namespace platform::win32 {

InterfaceHandle HandleTable::Enter(void* pointer, Interface interface_id) {
  return Enter(ComPointer<::IUnknown>(static_cast<::IUnknown*>(pointer)), interface_id);
}

InterfaceHandle HandleTable::Enter(ComPointer<::IUnknown> object, Interface interface_id) {
  if (!object) return InterfaceHandle::kNone;
  entries_.emplace(++last_, ComView{std::move(object), interface_id});
  return InterfaceHandle{last_};
}

std::optional<ComView> HandleTable::Find(InterfaceHandle handle) const {
  const auto entry = entries_.find(static_cast<std::uint32_t>(handle));
  if (entry == entries_.end()) return std::nullopt;
  return entry->second;
}

bool HandleTable::Release(InterfaceHandle handle) {
  // The object may call back while it dies, so it is no entry any more then.
  return !entries_.extract(static_cast<std::uint32_t>(handle)).empty();
}

}  // namespace platform::win32
