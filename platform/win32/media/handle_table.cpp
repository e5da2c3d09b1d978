#include "platform/win32/media/handle_table.h"

#include "platform/win32/base/windows_api.h"

#include <unknwn.h>

#include <utility>
#include <vector>

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

ComPointer<::IUnknown> HandleTable::Seen(Interface interface_id) const {
  for (const auto& [handle, view] : entries_) {
    if (view.interface_id == interface_id) return view.object;
  }
  return {};
}

void HandleTable::Replace(Interface interface_id, const ComPointer<::IUnknown>& object) {
  std::vector<ComPointer<::IUnknown>> replaced;
  for (auto& [handle, view] : entries_) {
    if (view.interface_id == interface_id) replaced.push_back(std::exchange(view.object, object));
  }
}

bool HandleTable::Release(InterfaceHandle handle) {
  // The object may call back while it dies, so it is no entry any more then.
  return !entries_.extract(static_cast<std::uint32_t>(handle)).empty();
}

}  // namespace platform::win32
