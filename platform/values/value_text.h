#pragma once
// A property value as text, independent of the user's locale. Not for lists of texts.

#include <optional>

#include "ports/property_value.h"

namespace platform::values {

/// The text of a value: texts as they are (bytes decoded from code page 1252), whole numbers in decimal,
/// floats with at most 7 (kFloat) or 15 (kDouble) significant digits and a decimal point, booleans as "-1"
/// and "0", GUIDs in braces, the empty value as "". Nothing for every other type, and for a payload that
/// does not belong to its type.
/// Public reference: the documentation of PropVariantChangeType and VariantChangeType (flags 0).
std::optional<Text> ValueText(const PropertyValue& value);

}  // namespace platform::values
