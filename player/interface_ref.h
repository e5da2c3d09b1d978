#pragma once
// Ownership of one reference to a platform object. Not for calling its operations.

#include <cassert>
#include <utility>

#include "player/interface_caller.h"

namespace player {

/// Releases its object when it is destroyed or given another one. An object that could not be released is
/// left with the caller, which tries again later, so that nothing leaks.
class InterfaceRef {
 public:
  /// An absent object.
  explicit InterfaceRef(InterfaceCaller& caller) : caller_(&caller) {}
  InterfaceRef(InterfaceRef&& other) noexcept
      : caller_(other.caller_), handle_(std::exchange(other.handle_, InterfaceHandle::kNone)) {}
  InterfaceRef& operator=(InterfaceRef&& other) noexcept {
    if (this == &other) return *this;
    LetGo();
    caller_ = other.caller_;
    handle_ = std::exchange(other.handle_, InterfaceHandle::kNone);
    return *this;
  }
  InterfaceRef(const InterfaceRef&) = delete;
  InterfaceRef& operator=(const InterfaceRef&) = delete;
  ~InterfaceRef() { LetGo(); }

  [[nodiscard]] InterfaceHandle Get() const { return handle_; }
  explicit operator bool() const { return handle_ != InterfaceHandle::kNone; }

  /// Where a callee may write a new reference. Only while the object is absent.
  InterfaceHandle& Receive() {
    assert(handle_ == InterfaceHandle::kNone);
    return handle_;
  }

  /// Releases the object now; it stays when the release could not be called.
  void Release() { caller_->ReleaseInterface(handle_); }

  /// Passes the object to the caller, which releases it later.
  void LeaveBehind() { caller_->LeaveBehind(std::exchange(handle_, InterfaceHandle::kNone)); }

 private:
  void LetGo() {
    Release();
    LeaveBehind();
  }

  InterfaceCaller* caller_;
  InterfaceHandle handle_ = InterfaceHandle::kNone;
};

}  // namespace player
