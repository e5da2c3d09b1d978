#pragma once
// A function of a system's library that does for a while what a test says, for the program's own calls of it.
// Not for calls by other libraries.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

namespace test_support {

/// Another function in the place of a library's while it lives. `place` is where the program finds that, and
/// what is linked into it calls through there: "__imp_" and the function's name.
template <typename Function>
class ReplacedImport {
 public:
  ReplacedImport(Function& place, Function replacement) : place_(place), original_(place) {
    Point(replacement);
  }
  ~ReplacedImport() { Point(original_); }
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;

 private:
  void Point(Function function) {
    DWORD before = 0;
    ASSERT_TRUE(::VirtualProtect(&place_, sizeof function, PAGE_READWRITE, &before));
    place_ = function;
    ASSERT_TRUE(::VirtualProtect(&place_, sizeof function, before, &before));
  }

  Function& place_;
  const Function original_;
};

}  // namespace test_support
