#pragma once
// Adapter: GUID texts and property values in plain C++, for systems that have none of their own.
// Not for calling operations.

#include <cstdint>

#include "ports/property_value.h"

namespace platform::values {

/// Answers with the public codes of the functions: CO_E_CLASSSTRING for a text that is not a GUID,
/// DISP_E_TYPEMISMATCH for a conversion that does not exist (or a payload that is not of its type), and
/// E_INVALIDARG for flags other than 0 or a target that is the source.
class PortablePropertyValues : public PropertyValues {
 public:
  std::int32_t CLSIDFromString(const Text& text, Guid& guid) override;
  std::int32_t StringFromIID(const Guid& guid, Text& text) override;
  std::int32_t PropVariantChangeType(PropertyValue& target, const PropertyValue& source, std::uint16_t flags,
                                     PropertyType type) override;
  std::int32_t PropVariantClear(PropertyValue& value) override;
};

inline constexpr std::int32_t kCoEClassString = static_cast<std::int32_t>(0x800401F3u);
inline constexpr std::int32_t kDispETypeMismatch = static_cast<std::int32_t>(0x80020005u);

}  // namespace platform::values
