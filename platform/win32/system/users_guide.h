#pragma once
// Where the user's guide is on this system. Not opening it.

#include "ports/text.h"

namespace platform::win32 {

/// The path of the guide that is packed beside a program in this folder; empty when there is none.
[[nodiscard]] Text UsersGuide(const Text& program_folder);

}  // namespace platform::win32
