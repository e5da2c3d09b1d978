#pragma once
// The INI engine over this system's disk. Not for what other programs, rights and links do;
// tests/platform/posix has that.

#include "platform/icu/text_conversion.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "tests/support/ini_fixture.h"
#include "tests/support/watched_disk.h"

namespace platform::ini {

using IniFixture =
    test_support::IniFixture<posix::PosixNativePaths, test_support::WatchedDisk<posix::PosixProfileFiles>,
                             icu::IcuTextConversion>;

}  // namespace platform::ini
