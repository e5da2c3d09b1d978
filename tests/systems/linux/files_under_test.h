#pragma once
// Which adapters the tests of the disk's contracts have before them on Linux. Not for tests of one adapter.

#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/record_files.h"

namespace under_test {

struct Disk {
  platform::posix::PosixNativePaths paths;
  platform::posix::PosixFiles files{paths};
  platform::posix::PosixRecordFiles record_files{paths};
};

/// Whether an open file shows that it has been removed.
inline bool ShowsRemoval() { return true; }

}  // namespace under_test
