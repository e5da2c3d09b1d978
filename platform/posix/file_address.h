#pragma once
// The address by which a desktop opens a file or a folder. Not for addresses of streams.

#include <string>

#include "ports/text.h"

namespace platform::posix {

/// The "file" address of an absolute native path, RFC 8089.
Text FileAddress(const std::string& native);

}  // namespace platform::posix
