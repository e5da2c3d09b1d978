#pragma once
// Adapter: the files of a running recording, on the disk. Not for files that are read or replaced as wholes.

#include <map>
#include <string>

#include "platform/posix/file_descriptor.h"
#include "ports/native_paths.h"
#include "ports/record_files.h"

namespace platform::posix {

/// Titles come from servers, so an existing file is overwritten only when it can only be an earlier
/// recording: a regular file with one name that nobody may execute. Bytes are buffered up to 64 KB; while the
/// disk takes none, no more are accepted. The paths must outlive the object.
class PosixRecordFiles final : public RecordFiles {
 public:
  explicit PosixRecordFiles(NativePaths& paths);
  ~PosixRecordFiles() override;

  RecordFile OpenBinary(const Text& folder, const Text& file_name) override;
  NewRecordFile CreateBinary(const Text& folder, const Text& file_name) override;
  bool WriteBytes(RecordFile file, std::span<const std::byte> bytes) override;
  bool Flush(RecordFile file) override;
  void Close(RecordFile file) override;
  std::size_t LongestFileName(const Text& folder) override;

 private:
  struct Recording {
    FileDescriptor file;
    std::string buffer;
  };
  [[nodiscard]] FileDescriptor FolderFor(const Text& folder, const Text& file_name);
  RecordFile Keep(FileDescriptor file);
  static bool FlushBuffer(Recording& recording);

  NativePaths& paths_;
  std::map<RecordFile, Recording> recordings_;
  std::uint32_t last_recording_ = 0;
};

}  // namespace platform::posix
