#include "platform/values/portable_property_values.h"

#include <variant>
#include <vector>

#include "platform/values/guid_text.h"
#include "platform/values/value_text.h"
#include "ports/interface_call.h"

namespace platform::values {

std::int32_t PortablePropertyValues::CLSIDFromString(const Text& text, Guid& guid) {
  const auto parsed = ParseGuid(text);
  if (!parsed) return kCoEClassString;
  guid = *parsed;
  return kSOk;
}

std::int32_t PortablePropertyValues::StringFromIID(const Guid& guid, Text& text) {
  text = GuidText(guid);
  return kSOk;
}

std::int32_t PortablePropertyValues::PropVariantChangeType(PropertyValue& target, const PropertyValue& source,
                                                           std::uint16_t flags, PropertyType type) {
  if (flags != 0 || &target == &source) return kEInvalidArg;
  if (type == PropertyType::kString) {
    const auto text = ValueText(source);
    if (!text) return kDispETypeMismatch;
    target = PropertyValue{type, *text};
    return kSOk;
  }
  const auto* list = std::get_if<std::vector<Text>>(&source.payload);
  const bool is_list = source.type == PropertyType::kWideStringVector && list != nullptr;
  if (type != PropertyType::kStringArray || !is_list) return kDispETypeMismatch;
  target = PropertyValue{type, *list};
  return kSOk;
}

std::int32_t PortablePropertyValues::PropVariantClear(PropertyValue& value) {
  value = PropertyValue{};
  return kSOk;
}

}  // namespace platform::values
