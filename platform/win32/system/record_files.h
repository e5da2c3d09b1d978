#pragma once
// Adapter: the files of a running recording, on the disk. Not for files that are read or replaced as wholes.

#include "platform/disk/buffered_record_files.h"

namespace platform::win32 {

/// Titles come from servers, so an existing file is overwritten only when it can only be an earlier
/// recording: a regular file with one name. A name with ":" would be another stream of a file and is refused.
/// A recording may be read and removed while it is written.
class Win32RecordFiles final : public disk::BufferedRecordFiles {
 public:
  RecordFile OpenBinary(const Text& folder, const Text& file_name) override;
  NewRecordFile CreateBinary(const Text& folder, const Text& file_name) override;
  /// Less where the folder's own path is so long that other programs could not open a file in it.
  std::size_t LongestFileName(const Text& folder) override;
};

}  // namespace platform::win32
