#pragma once
// Adapter: files and folders as wholes, on the disk. Not for recordings or INI files.

#include <map>
#include <vector>

#include "ports/files.h"

namespace platform::win32 {

/// A search gives a folder's entries as they were when it began, ordered by name, without "." and "..".
/// Patterns other than "folder\*.*" and "folder\*" find nothing. WriteWholeFile replaces regular files only,
/// keeps access rights of their own, and replaces the target of a symbolic link.
class Win32Files final : public Files {
 public:
  bool PathFileExistsW(const Text& path) override;
  bool CreateDirectoryW(const Text& path) override;
  FindHandle FindFirstFileW(const Text& pattern, FoundFile& found) override;
  bool FindNextFileW(FindHandle search, FoundFile& found) override;
  void FindClose(FindHandle search) override;
  std::optional<std::string> ReadWholeFile(const Text& path, std::size_t limit) override;
  bool WriteWholeFile(const Text& path, const std::string& bytes) override;
  bool DeleteFileW(const Text& path) override;
  bool MoveFileExW(const Text& path, const Text& new_path) override;

 private:
  struct Search {
    std::vector<FoundFile> entries;
    std::size_t next = 0;
  };

  std::map<FindHandle, Search> searches_;
  std::uint32_t last_search_ = 0;
};

}  // namespace platform::win32
