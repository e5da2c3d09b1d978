#pragma once
// The INI engine over the tests' own disk, for the rules of the format on any system. Not for what only a
// real system does.

#include "tests/support/ini_fixture.h"
#include "tests/support/plain_disk.h"
#include "tests/support/plain_text_conversion.h"

namespace platform::ini {

using IniFixture = test_support::IniFixture<test_support::PlainNativePaths, test_support::PlainProfileFiles,
                                            test_support::PlainTextConversion>;

}  // namespace platform::ini
