#pragma once
// Where the user's guide is on this system. Not opening it.

#include <string>

namespace platform::posix {

/// The native path of the guide that belongs to a program in this folder: the installed one, or that of the
/// source tree in whose build folder the program is. Empty when there is neither.
std::string UsersGuide(const std::string& program_folder);

}  // namespace platform::posix
