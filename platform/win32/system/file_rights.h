#pragma once
// The access rights that were set for a file itself, and giving them to the file that replaces it.
// Not for those that a file has from its folder: the system gives these to every new file there.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/win32/base/handles.h"

namespace platform::win32 {

/// Whether a file has its folder's rights besides its own.
enum class FoldersRights { kCount, kDoNotCount };

/// Sets the rights of an open file: what its folder gives, if that counts, and the entries of a list in the
/// system's form; everything for everybody when that is null.
using RightsSetting = std::function<bool(HANDLE file, FoldersRights folders, void* list)>;
bool SetRights(HANDLE file, FoldersRights folders, void* list);

class FileRights {
 public:
  /// Those of an existing file. Where the system does not show them there are none.
  static FileRights Of(const std::wstring& path);
  /// Those in a security descriptor in the system's self-relative form; none in an empty one.
  explicit FileRights(std::vector<std::byte> descriptor);

  /// Whether any of them was set for the file, or the folder's do not count for it.
  [[nodiscard]] bool AreItsOwn() const { return source_ != Source::kFolder; }

  /// To a new file, which has those of its folder. Does nothing when there are none of the file's own. False
  /// where the system refuses; the new file is then as it was.
  bool GiveTo(HANDLE file, const RightsSetting& set = SetRights) const;

 private:
  enum class Source { kFolder, kFolderAndFile, kFile };

  Source source_ = Source::kFolder;
  std::vector<std::byte> own_list_;  ///< empty: everything for everybody
};

}  // namespace platform::win32
