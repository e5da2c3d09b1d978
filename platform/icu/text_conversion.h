#pragma once
// Adapter: code pages and letter case, implemented with ICU and a table of code page 1252.
// Not for comparing texts; that is platform/icu/string_order.h.

#include "ports/text_conversion.h"

namespace platform::icu {

/// Code page 1252 follows the Unicode Consortium's table CP1252.TXT; UTF-8 follows RFC 3629, with one
/// U+FFFD for each maximal malformed part (the practice of the Unicode Standard, section 3.9). A character
/// outside the basic plane counts as one character, in either direction. UTF-8 input of more than 2^31-1
/// units or bytes cannot be converted and gives nothing.
class IcuTextConversion final : public TextConversion {
 public:
  std::string WideCharToMultiByte(CodePage page, TextView text) override;
  Text MultiByteToWideChar(CodePage page, std::string_view bytes) override;

  /// Only pairs of letters that map to each other in both directions change: "ı" does not become "I", because
  /// "I" becomes "i".
  Text CharLowerW(TextView text) override;
  Text CharUpperW(TextView text) override;
};

}  // namespace platform::icu
