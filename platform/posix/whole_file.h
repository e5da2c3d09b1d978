#pragma once
// Reads a regular file at once and replaces one in a single step. Names are the system's own.
// Not for files that grow while they are written, nor for the meaning of their bytes.

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct stat;

namespace platform::posix {

/// Distinguishes one state of a file from another: which file it is, its size and its times in nanoseconds.
struct DiskStamp {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::int64_t modified = 0;
  std::int64_t changed = 0;

  friend bool operator==(const DiskStamp&, const DiskStamp&) = default;
};

DiskStamp StampOf(const struct stat& status);

struct WholeFile {
  std::string bytes;
  DiskStamp stamp;
};

enum class ReadFailure {
  kMissing,    ///< there is nothing under this name
  kUnreadable  ///< there is something, but no readable regular file within the limit
};

struct ReadResult {
  std::optional<WholeFile> file;
  ReadFailure failure = ReadFailure::kUnreadable;  ///< has a meaning when there is no file
};

/// The bytes of a regular file of at most `limit` bytes. Never waits for the other end of a pipe.
ReadResult ReadRegularFile(const std::string& path, std::size_t limit);

/// Creates the file or replaces its contents in one step: a temporary file beside it is written, synced to
/// the disk and renamed; one that an earlier, killed replacement left there is removed. Permissions and owner
/// of an existing file are kept where the system allows it, and so is a symbolic link (its target is
/// replaced). Nothing when it failed (no such folder, read-only file or folder, no regular file, full disk);
/// the file is then unchanged.
std::optional<DiskStamp> ReplaceFile(const std::string& path, std::string_view bytes);

/// Writes all of `bytes`; false when the system took only a part of them, whose size is added to `written`.
bool WriteAll(int file, std::string_view bytes, std::size_t& written);

}  // namespace platform::posix
