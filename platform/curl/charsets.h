#pragma once
// Decodes a body by the name of its charset, with the system's converter. Not for choosing the charset
// (platform/http/body_text.h).

#include <optional>
#include <string>
#include <string_view>

#include "ports/text.h"

namespace platform::curl {

/// Nothing when the converter does not know the charset; U+FFFD for malformed bytes.
std::optional<Text> DecodeCharset(const std::string& charset, std::string_view body);

}  // namespace platform::curl
