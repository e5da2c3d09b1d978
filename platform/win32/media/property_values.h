#pragma once
// Adapter: GUID texts and property values by the system's own operations. Not for calling objects.

#include <cstdint>

#include "ports/property_value.h"

namespace platform::win32 {

/// What the system cannot convert is left to `rest`, which must outlive this object.
class Win32PropertyValues : public PropertyValues {
 public:
  explicit Win32PropertyValues(PropertyValues& rest) : rest_(rest) {}

  std::int32_t CLSIDFromString(const Text& text, Guid& guid) override;
  std::int32_t StringFromIID(const Guid& guid, Text& text) override;
  std::int32_t PropVariantChangeType(PropertyValue& target, const PropertyValue& source, std::uint16_t flags,
                                     PropertyType type) override;
  std::int32_t PropVariantClear(PropertyValue& value) override;

 private:
  PropertyValues& rest_;
};

}  // namespace platform::win32
