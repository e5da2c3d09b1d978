#pragma once
// Code pages and letter case for tests, by nothing but the standard library. Not for the program: letter case
// is known for the letters of code page 1252 and for Greek and Cyrillic ones only.

#include <string>
#include <string_view>

#include "ports/text_conversion.h"

namespace test_support {

class PlainTextConversion final : public platform::TextConversion {
 public:
  std::string WideCharToMultiByte(platform::CodePage page, platform::TextView text) override;
  platform::Text MultiByteToWideChar(platform::CodePage page, std::string_view bytes) override;
  platform::Text CharLowerW(platform::TextView text) override;
  platform::Text CharUpperW(platform::TextView text) override;
};

}  // namespace test_support
