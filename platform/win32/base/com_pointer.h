#pragma once
// A reference to an object of the system, released once. Not for creating objects.

#include <utility>

namespace platform::win32 {

template <typename Interface>
class ComPointer {
 public:
  ComPointer() = default;
  /// Takes over the caller's reference.
  explicit ComPointer(Interface* owned) : object_(owned) {}
  ~ComPointer() { Reset(); }
  ComPointer(const ComPointer& other) : object_(other.object_) {
    if (object_ != nullptr) object_->AddRef();
  }
  ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPointer& operator=(ComPointer other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  void Reset() {
    if (Interface* const object = std::exchange(object_, nullptr); object != nullptr) object->Release();
  }
  /// Where an operation writes a new reference; what was held is released before.
  [[nodiscard]] Interface** Receive() {
    Reset();
    return &object_;
  }
  /// The same, for operations that write any interface.
  [[nodiscard]] void** ReceiveAny() { return reinterpret_cast<void**>(Receive()); }
  [[nodiscard]] Interface* Get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};

}  // namespace platform::win32
