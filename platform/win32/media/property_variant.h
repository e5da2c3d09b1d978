#pragma once
// Turns property values into the system's (PROPVARIANT) and back. Not for converting between types
// (media/property_values.h).

#include "ports/property_value.h"

struct tagPROPVARIANT;

namespace platform::win32 {

/// Makes `target`, which is empty, hold the value; the caller clears it. False, and still empty, when the
/// payload does not belong to the type or there is no memory.
bool MakeVariant(const PropertyValue& value, tagPROPVARIANT& target);

/// The value in `source`, which stays the caller's; false, and nothing written, for a type that the port does
/// not know.
bool ReadVariant(const tagPROPVARIANT& source, PropertyValue& value);

}  // namespace platform::win32
