#pragma once
// Native paths taken apart, and the links in them followed. Not for the program's text
// (platform/posix/native_paths.h).

#include <optional>
#include <string>

namespace platform::posix {

/// The folder part of a path, "." when it has none.
std::string FolderOf(const std::string& path);

/// The file that `path` means once symbolic links in its last part are followed; it need not exist. Nothing
/// when the links go in a circle.
std::optional<std::string> FollowLinks(const std::string& path);

}  // namespace platform::posix
