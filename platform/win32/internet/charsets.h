#pragma once
// Decodes a body by the name of its charset, with the system's code pages. Not for choosing the charset
// (platform/http/body_text.h).

#include <optional>
#include <string>
#include <string_view>

#include "ports/text.h"

namespace platform::win32 {

/// Nothing when the system has no such code page; malformed bytes become what the code page puts in their
/// place.
std::optional<Text> DecodeCharset(const std::string& charset, std::string_view body);

}  // namespace platform::win32
