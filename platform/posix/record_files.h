#pragma once
// Adapter: the files of a running recording, on the disk. Not for files that are read or replaced as wholes.

#include "platform/disk/buffered_record_files.h"
#include "platform/posix/file_descriptor.h"
#include "ports/native_paths.h"

namespace platform::posix {

/// Titles come from servers, so an existing file is overwritten only when it can only be an earlier
/// recording: a regular file with one name that nobody may execute. The paths must outlive the object.
class PosixRecordFiles final : public disk::BufferedRecordFiles {
 public:
  explicit PosixRecordFiles(NativePaths& paths);

  RecordFile OpenBinary(const Text& folder, const Text& file_name) override;
  NewRecordFile CreateBinary(const Text& folder, const Text& file_name) override;
  std::size_t LongestFileName(const Text& folder) override;

 private:
  [[nodiscard]] FileDescriptor FolderFor(const Text& folder, const Text& file_name);

  NativePaths& paths_;
};

}  // namespace platform::posix
