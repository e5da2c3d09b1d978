#pragma once
// The ports of the disk for tests, with nothing but the standard library, so that they run on any system.
// Not for the program, nor for tests of links, permissions and other programs; tests/platform has those.

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ports/files.h"
#include "ports/native_paths.h"
#include "ports/profile_files.h"
#include "tests/support/plain_text_conversion.h"

namespace test_support {

/// Native names are UTF-8 with "/".
class PlainNativePaths final : public platform::NativePaths {
 public:
  platform::Text FromNative(const std::string& native) override;
  std::string ToNative(const platform::Text& path) override;
  std::string ToNativeForReading(const platform::Text& path) override { return ToNative(path); }

 private:
  PlainTextConversion conversion_;
};

class PlainFiles final : public platform::Files {
 public:
  bool PathFileExistsW(const platform::Text& path) override;
  bool CreateDirectoryW(const platform::Text& path) override;
  platform::FindHandle FindFirstFileW(const platform::Text& pattern, platform::FoundFile& found) override;
  bool FindNextFileW(platform::FindHandle search, platform::FoundFile& found) override;
  void FindClose(platform::FindHandle search) override { searches_.erase(search); }
  std::optional<std::string> ReadWholeFile(const platform::Text& path, std::size_t limit) override;
  bool WriteWholeFile(const platform::Text& path, const std::string& bytes) override;
  bool DeleteFileW(const platform::Text& path) override;
  bool MoveFileExW(const platform::Text& path, const platform::Text& new_path) override;

  bool is_full = false;  ///< no file can be written

 private:
  [[nodiscard]] std::filesystem::path PathOf(const platform::Text& path);

  PlainNativePaths paths_;
  std::map<platform::FindHandle, std::vector<platform::FoundFile>> searches_;  ///< in reverse order
  std::uint32_t last_search_ = 0;
};

class PlainProfileFiles final : public platform::ProfileFiles {
 public:
  std::pair<platform::ProfileReading, platform::FileStamp> Stamp(const std::string& name) override;
  platform::ProfileBytes Read(const std::string& name, std::size_t limit) override;
  std::optional<platform::FileState> Replace(const std::string& name, std::string_view bytes) override;
  platform::ProfileLocking Lock(const std::string& name) override;
  void Unlock(platform::ProfileLock) override { --open_locks; }

  bool is_full = false;  ///< no file can be replaced
  int reads = 0;         ///< of whole files
  int replacements = 0;
  int open_locks = 0;
  int unlocked_replacements = 0;
};

}  // namespace test_support
