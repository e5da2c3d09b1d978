#pragma once
// The address by which a desktop's file manager opens a folder. Not for addresses of streams.

#include <string>

#include "ports/text.h"

namespace platform::posix {

/// The "file" address of a folder with an absolute native path, RFC 8089.
Text FolderAddress(const std::string& native);

}  // namespace platform::posix
