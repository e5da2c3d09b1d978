#pragma once
// Port: the files of a running recording, written piece by piece in binary mode.
// Not for files that are read or replaced as wholes (ports/files.h).

#include <cstddef>
#include <cstdint>
#include <span>

#include "ports/text.h"

namespace platform {

/// An open recording; zero is none.
enum class RecordFile : std::uint32_t { kNone = 0 };

/// The result of creating a new file.
struct NewRecordFile {
  RecordFile file = RecordFile::kNone;
  /// No file was created because something of that name, whatever it is, already exists.
  bool name_is_taken = false;
};

/// Writing starts at a file's first byte and overwrites what is there; a file is never truncated.
/// Nothing here throws.
class RecordFiles {
 public:
  virtual ~RecordFiles() = default;

  /// Opens `file_name` directly inside `folder`, creating it when missing. kNone when `file_name` holds a
  /// separator or is "." or "..", when the entry is a link or no regular file, or when the system refuses.
  virtual RecordFile OpenBinary(const Text& folder, const Text& file_name) = 0;

  /// Creates `file_name` directly inside `folder`, in one step: when several programs ask for the same name
  /// at once, one of them gets it. Refuses the same names as OpenBinary.
  virtual NewRecordFile CreateBinary(const Text& folder, const Text& file_name) = 0;

  /// Writes all bytes at the current position. False when not all could be written (disk full); what was
  /// written stays.
  virtual bool WriteBytes(RecordFile file, std::span<const std::byte> bytes) = 0;

  /// Makes everything written so far visible to readers of the file. False when that failed, and when the
  /// file is not there any more (removed, or its folder with it).
  virtual bool Flush(RecordFile file) = 0;

  /// Flushes and closes. kNone is allowed and does nothing.
  virtual void Close(RecordFile file) = 0;

  /// The longest file name, counted in bytes of UTF-8 whatever the system's own encoding, that `folder` can
  /// take.
  virtual std::size_t LongestFileName(const Text& folder) = 0;
};

}  // namespace platform
