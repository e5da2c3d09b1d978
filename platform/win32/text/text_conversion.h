#pragma once
// Adapter: code pages and letter case by the system's operations.
// Not for comparing texts; that is platform/win32/text/string_order.h.

#include "ports/text_conversion.h"

namespace platform::win32 {

/// A character outside the basic plane counts as one character in either direction. How many U+FFFD a
/// malformed part of UTF-8 becomes is the system's choice. Input of more than 2^31-1 units or bytes cannot be
/// converted and gives nothing. Public reference: the Win32 documentation of the four operations.
class Win32TextConversion final : public TextConversion {
 public:
  std::string WideCharToMultiByte(CodePage page, TextView text) override;
  Text MultiByteToWideChar(CodePage page, std::string_view bytes) override;
  Text CharLowerW(TextView text) override;
  Text CharUpperW(TextView text) override;
};

}  // namespace platform::win32
