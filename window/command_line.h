#pragma once
// What the program is asked to do by the words behind its name. Not for doing it.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace window {

/// Longest argument, in bytes; no path and no usable address is as long.
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

/// At most one word; behind "--" one that begins with "-" too. "-session" and its value, by which a session
/// manager starts the program again, are passed over: they are the toolkit's. Of several wishes the first
/// one that is no kRun counts.
[[nodiscard]] CommandLine ReadCommandLine(std::span<const char* const> words);

/// How the program is called, in German, several lines of UTF-8.
[[nodiscard]] std::string_view Usage();

}  // namespace window
