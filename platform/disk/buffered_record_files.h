#pragma once
// The part of a recording's files that is the same on every system: handles, buffers, order of writing.
// Not for opening files, which is each system's own.

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "ports/record_files.h"

namespace platform::disk {

/// An open file of the system, which is closed at the object's end.
class OpenRecording {
 public:
  virtual ~OpenRecording() = default;

  /// Writes all of `bytes`; false when the system took only a part of them, whose size is added to `written`.
  virtual bool Write(std::string_view bytes, std::size_t& written) = 0;

  /// The system keeps accepting bytes for a file that has been removed, but nobody can find them any more.
  [[nodiscard]] virtual bool HasName() const = 0;
};

/// Bytes are buffered up to 64 KB; while the disk takes none, no more are accepted. What is still buffered is
/// written at the end.
class BufferedRecordFiles : public RecordFiles {
 public:
  ~BufferedRecordFiles() override;

  bool WriteBytes(RecordFile file, std::span<const std::byte> bytes) final;
  bool Flush(RecordFile file) final;
  void Close(RecordFile file) final;

 protected:
  RecordFile Keep(std::unique_ptr<OpenRecording> file);

 private:
  struct Recording {
    std::unique_ptr<OpenRecording> file;
    std::string buffer;
  };
  static bool FlushBuffer(Recording& recording);

  std::map<RecordFile, Recording> recordings_;
  std::uint32_t last_recording_ = 0;
};

}  // namespace platform::disk
