#pragma once
// Files and folders in memory, by the texts of their paths. Not a file system: no parents, no rights.

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ports/files.h"

namespace test_support {

/// A folder is known by its path with the "\" at its end; it is found with and without it.
class MemoryFiles : public platform::Files {
 public:
  bool PathFileExistsW(const platform::Text& path) override {
    existence_questions.push_back(path);
    return files.contains(path) || folders.contains(WithBackslash(path));
  }
  bool CreateDirectoryW(const platform::Text& path) override {
    created_folders.push_back(path);
    return can_create_folders && folders.insert(WithBackslash(path)).second;
  }
  platform::FindHandle FindFirstFileW(const platform::Text& pattern, platform::FoundFile& found) override {
    patterns.push_back(pattern);
    next_listed_ = 0;
    if (!FindNextFileW(platform::FindHandle::kNone, found)) return platform::FindHandle::kNone;
    ++open_searches;
    return platform::FindHandle{1};
  }
  bool FindNextFileW(platform::FindHandle, platform::FoundFile& found) override {
    if (next_listed_ >= listing.size()) return false;
    found = listing[next_listed_++];
    return true;
  }
  void FindClose(platform::FindHandle) override { --open_searches; }
  std::optional<std::string> ReadWholeFile(const platform::Text& path, std::size_t limit) override {
    const auto file = files.find(path);
    if (file == files.end() || file->second.size() > limit) return std::nullopt;
    return file->second;
  }
  bool WriteWholeFile(const platform::Text& path, const std::string& bytes) override {
    ++writes;
    if (!can_write) return false;
    files[path] = bytes;
    return true;
  }
  bool DeleteFileW(const platform::Text& path) override { return files.erase(path) > 0; }
  bool MoveFileExW(const platform::Text& path, const platform::Text& new_path) override {
    const auto file = files.find(path);
    if (file == files.end()) return false;
    std::string bytes = std::move(file->second);
    files.erase(file);
    files[new_path] = std::move(bytes);
    return true;
  }

  std::map<platform::Text, std::string> files;
  std::set<platform::Text> folders;
  bool can_write = true;
  int writes = 0;
  bool can_create_folders = true;
  std::vector<platform::Text> existence_questions;
  std::vector<platform::Text> created_folders;

  /// What every search finds, and the searches so far.
  std::vector<platform::FoundFile> listing;
  std::vector<platform::Text> patterns;
  int open_searches = 0;

 private:
  static platform::Text WithBackslash(platform::Text path) {
    if (!path.empty() && path.back() != u'\\') path.push_back(u'\\');
    return path;
  }

  std::size_t next_listed_ = 0;
};

}  // namespace test_support
