#pragma once
// Adapter: the files of a running recording, on the disk. Not for files that are read or replaced as wholes.

#include <map>
#include <string>

#include "platform/win32/system/owned_handle.h"
#include "ports/record_files.h"

namespace platform::win32 {

/// Titles come from servers, so an existing file is overwritten only when it can only be an earlier
/// recording: a regular file with one name. A name with ":" would be another stream of a file and is refused.
/// Bytes are buffered up to 64 KB; while the disk takes none, no more are accepted. A recording may be read
/// and removed while it is written.
class Win32RecordFiles final : public RecordFiles {
 public:
  Win32RecordFiles() = default;
  ~Win32RecordFiles() override;

  RecordFile OpenBinary(const Text& folder, const Text& file_name) override;
  NewRecordFile CreateBinary(const Text& folder, const Text& file_name) override;
  bool WriteBytes(RecordFile file, std::span<const std::byte> bytes) override;
  bool Flush(RecordFile file) override;
  void Close(RecordFile file) override;
  /// Less where the folder's own path is so long that other programs could not open a file in it.
  std::size_t LongestFileName(const Text& folder) override;

 private:
  struct Recording {
    OwnedHandle file;
    std::string buffer;
  };
  RecordFile Keep(OwnedHandle file);
  static bool FlushBuffer(Recording& recording);

  std::map<RecordFile, Recording> recordings_;
  std::uint32_t last_recording_ = 0;
};

}  // namespace platform::win32
