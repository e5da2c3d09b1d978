#pragma once
// The INI engine over this system's disk. Not for the rules of the format; tests/platform/ini has those.

#include "platform/icu/text_conversion.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "tests/support/ini_fixture.h"

namespace platform::posix {

using ini::IniPrivateProfile;
using IniFixture = test_support::IniFixture<PosixNativePaths, PosixProfileFiles, icu::IcuTextConversion>;

}  // namespace platform::posix
