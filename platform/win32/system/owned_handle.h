#pragma once
// An object of the system that is referred to by a handle and closed once: a file, a lock, an event.
// Not for objects with a closing operation of their own (windows, searches, images).

#include <utility>

#include "platform/win32/base/handles.h"

namespace platform::win32 {

class OwnedHandle {
 public:
  OwnedHandle() = default;
  /// Takes over `handle`; what the system returns for a failure, in either form, is nothing.
  explicit OwnedHandle(HANDLE handle);
  ~OwnedHandle() { Close(); }
  OwnedHandle(OwnedHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  OwnedHandle& operator=(OwnedHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }

  [[nodiscard]] bool IsOpen() const { return handle_ != nullptr; }
  [[nodiscard]] HANDLE Get() const { return handle_; }
  void Close();

 private:
  HANDLE handle_ = nullptr;
};

}  // namespace platform::win32
