#pragma once
// What a start of the program was given to open, in a form that means the same in every other process.
// Not whether it can be opened.

#include <string>
#include <string_view>

namespace platform::posix {

/// An address (it contains "://") as it is; for "file://" the path that it names on this machine. Every other
/// word is a path: made absolute with `folder`, the full path of the working folder, and otherwise kept as it
/// is, links and ".." included. An empty word stays empty; without a folder a path stays as it is. Public
/// reference: RFC 8089 for "file".
std::string StartArgument(std::string_view word, std::string_view folder);

/// The full path of the working folder; empty when it is gone.
std::string WorkingFolder();

}  // namespace platform::posix
