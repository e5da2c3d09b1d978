#pragma once
// Port: code pages and letter case. Not for formatting or parsing.

#include <cstdint>
#include <string>

#include "ports/text.h"

namespace platform {

/// The code pages that the program uses.
enum class CodePage : std::uint32_t {
  kAnsi = 1252,   ///< Windows-1252 as a total two-way map of all 256 bytes; the five unassigned bytes map
                  ///< to the control characters of the same number. What it lacks is written as "?".
  kUtf8 = 65001,  ///< UTF-8; malformed input decodes to U+FFFD.
};

/// Total functions: nothing throws, empty input gives empty output.
class TextConversion {
 public:
  virtual ~TextConversion() = default;

  /// The bytes of `text`. An unpaired surrogate counts as one character that the page lacks.
  virtual std::string WideCharToMultiByte(CodePage page, TextView text) = 0;

  /// The text of `bytes`.
  virtual Text MultiByteToWideChar(CodePage page, std::string_view bytes) = 0;

  /// Lower and upper case, unit by unit as the platform's own operations do it: the length never changes
  /// ("ß" stays "ß").
  virtual Text CharLowerW(TextView text) = 0;
  virtual Text CharUpperW(TextView text) = 0;
};

}  // namespace platform
