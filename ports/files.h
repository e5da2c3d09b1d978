#pragma once
// Port: files and folders as wholes - existence, listing, reading, replacing and removing.
// Not for recordings, which grow while they are written (ports/record_files.h), nor INI files.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "ports/text.h"

namespace platform {

/// One search through a folder; zero is no search.
enum class FindHandle : std::uint32_t { kNone = 0 };

/// One entry found by a search.
struct FoundFile {
  Text name;                      ///< without its folder
  bool is_directory = false;      ///< FILE_ATTRIBUTE_DIRECTORY
  bool is_reparse_point = false;  ///< FILE_ATTRIBUTE_REPARSE_POINT: a symbolic link
};

/// Paths use "\"; the adapter turns it into the system's own separator. Nothing here throws.
class Files {
 public:
  virtual ~Files() = default;

  /// True when `path` names an existing file or folder; an empty path names nothing.
  virtual bool PathFileExistsW(const Text& path) = 0;

  /// Creates the last level of `path`. False when it exists already or cannot be created.
  virtual bool CreateDirectoryW(const Text& path) = 0;

  /// Starts a search for "folder\*.*" (every name, with or without a dot) and gives its first entry.
  /// kNone when the folder does not exist or holds nothing. Every other handle needs FindClose.
  virtual FindHandle FindFirstFileW(const Text& pattern, FoundFile& found) = 0;

  /// The next entry; false when there is none, `found` is then as it was.
  virtual bool FindNextFileW(FindHandle search, FoundFile& found) = 0;

  virtual void FindClose(FindHandle search) = 0;

  /// The bytes of a regular file. Nothing when it cannot be read, is no regular file, or is larger than
  /// `limit` bytes.
  virtual std::optional<std::string> ReadWholeFile(const Text& path, std::size_t limit) = 0;

  /// Creates the file or replaces its contents in one step. On false (no such folder, no permission, disk
  /// full) an existing file is as it was before.
  virtual bool WriteWholeFile(const Text& path, const std::string& bytes) = 0;

  /// Deletes a file. False when there is none or it cannot be deleted.
  virtual bool DeleteFileW(const Text& path) = 0;

  /// Gives a file or folder another name in one step; an existing file of that name is replaced. On false
  /// both are as they were before.
  virtual bool MoveFileExW(const Text& path, const Text& new_path) = 0;
};

}  // namespace platform
