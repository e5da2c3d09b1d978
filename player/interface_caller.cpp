#include "player/interface_caller.h"

#include <cstddef>

#include "ports/media_interfaces.h"

namespace player {

namespace {

constexpr std::size_t kGuidTextLength = 38;

}  // namespace

void InterfaceCaller::ReleaseInterface(InterfaceHandle& object) {
  if (CallInterface(object, platform::IUnknown::Release)) object = InterfaceHandle::kNone;
}

void InterfaceCaller::LeaveBehind(InterfaceHandle object) {
  if (object != InterfaceHandle::kNone) left_behind_.push_back(object);
}

void InterfaceCaller::ReleaseLeftBehind() {
  std::erase_if(left_behind_, [this](InterfaceHandle& object) {
    ReleaseInterface(object);
    return object == InterfaceHandle::kNone;
  });
}

Guid InterfaceCaller::GuidFromString(TextView text) {
  Guid guid;
  if (text.size() != kGuidTextLength) return guid;
  if (!IsOk(values_.CLSIDFromString(Text(text), guid))) return {};
  return guid;
}

Text InterfaceCaller::StringFromGuid(const Guid& guid) {
  Text text;
  if (!IsOk(values_.StringFromIID(guid, text))) return {};
  return text;
}

bool InterfaceCaller::CreateInterface(TextView sCLSID, TextView sIID, InterfaceHandle& pInterface) {
  const Guid class_id = GuidFromString(sCLSID);
  const Guid interface_id = GuidFromString(sIID);
  InterfaceHandle created = InterfaceHandle::kNone;
  if (!IsOk(calls_.CoCreateInstance(class_id, InterfaceHandle::kNone, platform::kClsctxInprocServer,
                                    interface_id, created))) {
    return false;
  }
  pInterface = created;
  return true;
}

}  // namespace player
