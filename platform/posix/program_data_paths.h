#pragma once
// Adapter: native paths by which the program's data are found in the user's data folder and beside the
// program, whatever the letter case of their names. Not for files that the program writes; their names count
// as they are.

#include <string>
#include <vector>

#include "ports/native_paths.h"
#include "ports/text_conversion.h"

namespace platform::posix {

/// Where the folders of data lie: what is in the user's own wins over what is beside the program, which may
/// belong to the system.
struct DataRoots {
  std::string users;  ///< native; empty when there is none
  Text program;
};

/// Users fill the folders of data on systems that do not distinguish "RadioICO" from "RadioIco". So a path
/// into one of them that does not exist is searched level by level: a name that exists as it is written comes
/// first, then the first, by its bytes, of those that differ by letter case only. This costs one listing for
/// each such level, and nothing for paths that lead elsewhere. What does not exist keeps its path beside the
/// program.
class ProgramDataPaths final : public NativePaths {
 public:
  /// `data_folders` are names of folders in the roots; paths to them begin with the program's. The ports must
  /// outlive the object.
  ProgramDataPaths(NativePaths& inner, TextConversion& conversion, const DataRoots& roots,
                   std::vector<Text> data_folders);

  Text FromNative(const std::string& native) override { return inner_.FromNative(native); }
  std::string ToNative(const Text& path) override { return inner_.ToNative(path); }
  std::string ToNativeForReading(const Text& path) override;
  std::vector<std::string> ToNativeForListing(const Text& folder) override;

 private:
  /// The levels below a root of a path into a folder of data; none for any other path.
  [[nodiscard]] std::vector<std::string> DataLevels(const std::string& native);
  [[nodiscard]] bool LeadIntoData(const std::vector<std::string>& levels);
  /// What can be read in a root; empty when there is nothing.
  [[nodiscard]] std::string FoundIn(const std::string& root, const std::vector<std::string>& levels);
  /// Empty when nothing of this name can be read in the folder.
  [[nodiscard]] std::string SpellingThatExists(const std::string& folder, const std::string& level);
  [[nodiscard]] bool DifferByCaseAtMost(const Text& one, const Text& other);

  NativePaths& inner_;
  TextConversion& conversion_;
  const std::string program_folder_;  ///< ends with "/"
  std::vector<std::string> roots_;    ///< the user's before the program's; each ends with "/"
  const std::vector<Text> data_folders_;
};

}  // namespace platform::posix
