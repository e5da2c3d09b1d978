#pragma once
// The INI engine over this system's disk. Not for what other programs, rights and links do;
// tests/platform/win32 has that.

#include "platform/win32/system/native_paths.h"
#include "platform/win32/system/profile_files.h"
#include "platform/win32/text/text_conversion.h"
#include "tests/support/ini_fixture.h"
#include "tests/support/watched_disk.h"

namespace platform::ini {

using IniFixture =
    test_support::IniFixture<win32::Win32NativePaths, test_support::WatchedDisk<win32::Win32ProfileFiles>,
                             win32::Win32TextConversion>;

}  // namespace platform::ini
