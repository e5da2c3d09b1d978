#pragma once
// Objects behind handles, and the table of handles.
// Not the objects themselves: media_objects.h, topology_objects.h, session_objects.h, endpoint_objects.h.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>

#include "platform/gstreamer/results.h"
#include "ports/interface_dispatch.h"

namespace platform::gstreamer {

/// One interface of one object. Several may share the same underlying object.
class Object : public std::enable_shared_from_this<Object> {
 public:
  virtual ~Object() = default;
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  [[nodiscard]] std::optional<HResult> Call(Interface interface_id, std::int32_t slot,
                                            std::span<const Argument> arguments) const {
    return operations_.Call(interface_id, slot, arguments);
  }

  /// The object seen through interface `iid`; null when it has no such interface.
  virtual std::shared_ptr<Object> As(const Guid& iid) = 0;

 protected:
  template <typename... Arguments, typename Function>
  void Bind(const Operation<Arguments...>& operation, Function function) {
    operations_.Bind(operation, std::move(function));
  }

 private:
  OperationTable operations_;
};

/// Every handle is one reference. Used on the caller's thread only.
class HandleTable {
 public:
  /// A new handle; `out` may be null, which is the caller's mistake.
  HResult Hand(std::shared_ptr<Object> object, InterfaceHandle* out) {
    if (out == nullptr) return kEPointer;
    do {
      last_ = last_ + 1;
    } while (last_ == 0 || objects_.contains(last_));
    objects_.emplace(last_, std::move(object));
    *out = InterfaceHandle{last_};
    return kSOk;
  }

  [[nodiscard]] std::shared_ptr<Object> Find(InterfaceHandle handle) const {
    const auto found = objects_.find(static_cast<std::uint32_t>(handle));
    return found == objects_.end() ? nullptr : found->second;
  }

  template <typename Type>
  [[nodiscard]] std::shared_ptr<Type> FindAs(InterfaceHandle handle) const {
    return std::dynamic_pointer_cast<Type>(Find(handle));
  }

  void Release(InterfaceHandle handle) { objects_.erase(static_cast<std::uint32_t>(handle)); }

 private:
  std::map<std::uint32_t, std::shared_ptr<Object>> objects_;
  std::uint32_t last_ = 0;
};

}  // namespace platform::gstreamer
