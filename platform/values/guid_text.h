#pragma once
// The text form of a GUID: parsing and writing it. Not for property values.

#include <optional>

#include "ports/property_value.h"

namespace platform::values {

/// The GUID that "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}" names, hexadecimal digits in either letter case
/// (the text form of RFC 9562 in braces). Nothing when the text has any other shape.
std::optional<Guid> ParseGuid(TextView text);

/// The same form with braces and upper-case digits; always 38 characters.
Text GuidText(const Guid& guid);

}  // namespace platform::values
