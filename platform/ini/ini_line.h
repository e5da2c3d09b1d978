#pragma once
// What one line of an INI file says, and the trimming and quoting rules of names and values.
// Not for bytes, code pages or whole files.

#include "ports/text.h"

namespace platform::ini {

enum class IniLineKind {
  kBlank,    ///< nothing but blanks and tabs
  kSection,  ///< "[name]", whatever follows the last "]"
  kKey,      ///< "name=value"; the first "=" splits
  kOther     ///< a comment (";" first) or anything else; it has no meaning and is kept
};

struct IniLine {
  IniLineKind kind = IniLineKind::kBlank;
  TextView name;   ///< of the section or the key, trimmed
  TextView value;  ///< of the key, trimmed, still with its quotes
};

/// Reads a line without its line end. The views point into `line`.
IniLine ReadIniLine(TextView line);

/// `text` without the blanks and tabs at its two ends.
TextView TrimBlanks(TextView text);

/// `value` without one pair of equal quotes (both " or both ') around it.
TextView RemoveQuotes(TextView value);

}  // namespace platform::ini
