#pragma once
// What the recording tool is asked to do by its command-line arguments. Not for doing it.

#include <span>
#include <string>
#include <string_view>

namespace recorder {

struct CommandLine {
  enum class Wish {
    kRecord,   ///< `link`, or whatever the user still has to name when it is empty
    kHelp,     ///< "--help" or "-h"
    kWrongUse  ///< an option that does not exist
  };
  enum class Form {
    kWindowIfPossible,
    kTerminal  ///< "--terminal"
  };
  Wish wish = Wish::kRecord;
  std::string link;
  Form form = Form::kWindowIfPossible;
};

/// A link as it was entered, without the blanks and control characters (a line end, a tab) at its ends;
/// UTF-8.
[[nodiscard]] std::string TrimmedLink(std::string_view entered);

/// The word "--terminal" may be anywhere. All other words together are one link, because the caller may have
/// split it at its blanks; no link begins with "-". The link is trimmed.
[[nodiscard]] CommandLine ReadCommandLine(std::span<const char* const> words);

/// The same for a system that passes what follows the program's name as one text. All of it is the link, with
/// its blanks and quotation marks; only a pair of marks round the whole is taken off.
[[nodiscard]] CommandLine ReadCommandTail(std::string_view tail);

/// How to call the tool, in German, several lines of UTF-8.
[[nodiscard]] std::string_view Usage();

}  // namespace recorder
