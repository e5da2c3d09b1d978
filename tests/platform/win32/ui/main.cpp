#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <objbase.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  return RUN_ALL_TESTS();
}
