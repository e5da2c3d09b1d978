#pragma once
// A scratch folder that is gone after the test. Not for files of the source tree.

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "ports/text.h"

namespace test_support {

class TempFolder {
 public:
  /// In the system's folder for temporary files, or in another one.
  explicit TempFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  /// The path of an entry as the program's text; the entry need not exist.
  [[nodiscard]] platform::Text TextPath(const std::string& name = "") const;
  /// Writes a file (its folders are made) and gives its path.
  std::filesystem::path Write(const std::string& name, const std::string& bytes) const;
  /// The bytes of a file, "<missing>" when there is none.
  [[nodiscard]] std::string Read(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace test_support
