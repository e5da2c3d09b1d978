#pragma once
// A path in the form in which the system's file operations take it, and names that stand for a path.
// Not for taking paths apart or resolving links.

#include <optional>
#include <string>

#include "ports/text.h"

namespace platform::win32 {

/// A path that is too long for the operations as it is becomes absolute and gets the prefix that lifts their
/// limit. Nothing for an empty path and one with a NUL, which name no file. Public reference: "Maximum Path
/// Length Limitation" in the Win32 documentation.
std::optional<std::wstring> SystemPath(TextView path);

/// A path with that prefix as users know it, where it is short enough for that.
std::wstring WithoutPrefix(const std::wstring& path);

/// The part before the last separator, with it; empty when there is none.
std::wstring FolderOf(const std::wstring& path);

/// 16 hexadecimal digits that stay the same from run to run and from build to build, whatever the letter
/// case. Public reference: the FNV-1a hash function.
std::wstring NumberOf(std::wstring name);

/// The path by which the system itself knows an existing file or folder, with links and detours resolved;
/// nothing when it does not exist.
std::optional<std::wstring> ResolvedPath(const std::wstring& path);

}  // namespace platform::win32
