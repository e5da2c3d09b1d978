#pragma once
// The text of a document's body, by byte-order mark and charset.
// Not for stream titles; those carry no charset.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "ports/text_conversion.h"

namespace platform::http {

/// How a system decodes the charsets that the port for code pages does not know: the charset's name in lower
/// case and the body; nothing when the system does not know the charset either.
using DecodeCharset = std::function<std::optional<Text>(const std::string& charset, std::string_view body)>;

/// A byte-order mark (UTF-8, UTF-16) decides and is removed; otherwise the charset that `content_type` names
/// ("text/plain; charset=..."), and UTF-8 when it names none or one that is not known. Malformed UTF-8 gives
/// U+FFFD, as does half a unit at the end of UTF-16; a lone surrogate in UTF-16 stays as it is. As browsers
/// do, ISO-8859-1 and US-ASCII are read as Windows-1252, and UTF-16 without a mark as little-endian.
Text DecodeBody(TextConversion& conversion, const DecodeCharset& decode_charset, std::string_view body,
                std::string_view content_type);

}  // namespace platform::http
