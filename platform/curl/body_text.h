#pragma once
// The text of a document's body, by byte-order mark and charset.
// Not for stream titles; those carry no charset.

#include <string_view>

#include "ports/text_conversion.h"

namespace platform::curl {

/// A byte-order mark (UTF-8, UTF-16) decides and is removed; otherwise the charset that `content_type` names
/// ("text/plain; charset=..."), and UTF-8 when it names none or one that is not known. Malformed input gives
/// U+FFFD. As browsers do, ISO-8859-1 and US-ASCII are read as Windows-1252.
Text DecodeBody(TextConversion& conversion, std::string_view body, std::string_view content_type);

}  // namespace platform::curl
