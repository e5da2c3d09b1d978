#pragma once
// A function or an operation of the system that does for a while what a test says. Not for the program's own.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <unknwn.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace platform::win32 {

/// From its first byte on it jumps to the replacement, whoever calls it. No other thread may call it while it
/// is being replaced.
template <typename Function>
class ReplacedFunction {
 public:
  ReplacedFunction(const wchar_t* library, const char* name, Function* replacement)
      : ReplacedFunction(reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(library), name)), replacement) {}
  /// The operation in that slot of `object`, and of all objects that have the same one.
  ReplacedFunction(::IUnknown& object, std::size_t slot, Function* replacement)
      : ReplacedFunction((*reinterpret_cast<void***>(&object))[slot], replacement) {}
  ~ReplacedFunction() { Write(original_); }
  ReplacedFunction(const ReplacedFunction&) = delete;
  ReplacedFunction& operator=(const ReplacedFunction&) = delete;

  /// The system's own, called from the replacement.
  template <typename... Given>
  auto CallOriginal(Given... given) {
    Write(original_);
    const auto result = function_(given...);
    Write(jump_);
    return result;
  }

 private:
  using Bytes = std::array<std::uint8_t, 12>;
  ReplacedFunction(void* place, Function* replacement) : function_(reinterpret_cast<Function*>(place)) {
    // mov rax, replacement; jmp rax
    jump_ = {0x48, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xE0};
    std::memcpy(&jump_[2], &replacement, sizeof replacement);
    std::memcpy(original_.data(), place, original_.size());
    Write(jump_);
  }
  void Write(const Bytes& bytes) {
    void* const place = reinterpret_cast<void*>(function_);
    DWORD before = 0;
    ASSERT_TRUE(VirtualProtect(place, bytes.size(), PAGE_EXECUTE_READWRITE, &before));
    std::memcpy(place, bytes.data(), bytes.size());
    VirtualProtect(place, bytes.size(), before, &before);
    FlushInstructionCache(GetCurrentProcess(), place, bytes.size());
  }

  Function* const function_;
  Bytes jump_{};
  Bytes original_{};
};

}  // namespace platform::win32
