#pragma once
// Adapter: native paths by which the program's data are found whatever the letter case of their names.
// Not for files that the program writes; their names count as they are.

#include <string>
#include <vector>

#include "ports/native_paths.h"
#include "ports/text_conversion.h"

namespace platform::posix {

/// Users fill the folders of data beside the program on systems that do not tell "RadioICO" from "RadioIco".
/// So a path into one of them that does not exist is looked for level by level: a name that exists as it is
/// written comes first, then the first, by its bytes, of those that differ by letter case only. This costs
/// one listing for each such level, and nothing for paths that lead elsewhere.
class ProgramDataPaths final : public NativePaths {
 public:
  /// `data_folders` are names of folders in `program_folder`. The ports must outlive the object.
  ProgramDataPaths(NativePaths& inner, TextConversion& conversion, const Text& program_folder,
                   std::vector<Text> data_folders);

  Text FromNative(const std::string& native) override { return inner_.FromNative(native); }
  std::string ToNative(const Text& path) override { return inner_.ToNative(path); }
  std::string ToNativeForReading(const Text& path) override;

 private:
  [[nodiscard]] bool LeadIntoData(const std::vector<std::string>& levels);
  /// Empty when nothing of this name can be read in the folder.
  [[nodiscard]] std::string SpellingThatExists(const std::string& folder, const std::string& level);
  [[nodiscard]] bool DifferByCaseAtMost(const Text& one, const Text& other);

  NativePaths& inner_;
  TextConversion& conversion_;
  const std::string program_folder_;  ///< ends with "/"
  const std::vector<Text> data_folders_;
};

}  // namespace platform::posix
