#pragma once
// Native paths taken apart, links in them followed, and the names in a folder. Not for the program's text
// (platform/posix/native_paths.h).

#include <optional>
#include <string>
#include <vector>

namespace platform::posix {

/// The folder part of a path, "." when it has none.
std::string FolderOf(const std::string& path);

/// The file that `path` means once symbolic links in its last part are followed; it need not exist. Nothing
/// when the links go in a circle.
std::optional<std::string> FollowLinks(const std::string& path);

/// What a folder contains, without "." and "..", in order of the names' bytes; nothing when it cannot be
/// read.
std::vector<std::string> NamesIn(const std::string& folder);

}  // namespace platform::posix
