#pragma once
// What the program is asked to do by its command-line arguments. Not for doing it.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace window {

/// Longest argument, in bytes; no path and no usable address is that long.
inline constexpr std::size_t kLongestArgument = 32'768;

struct CommandLine {
  enum class Wish {
    kRun,      ///< with `argument`, the file or address to open; it may be empty
    kHelp,     ///< "--help" or "-h"
    kVersion,  ///< "--version"
    kWrongUse  ///< `problem` says in German why, one line of UTF-8 without its end
  };
  Wish wish = Wish::kRun;
  std::string argument;
  std::string problem;
};

/// At most one word; after "--" also one that begins with "-". "-session" and its value, with which a session
/// manager restarts the program, are skipped: they are for the toolkit. Of several requests the first one
/// that is not kRun counts.
[[nodiscard]] CommandLine ReadCommandLine(std::span<const char* const> words);

/// How to call the program, in German, several lines of UTF-8.
[[nodiscard]] std::string_view Usage();

}  // namespace window
