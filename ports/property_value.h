#pragma once
// Port: conversions of GUIDs and property values (PROPVARIANT), and these values themselves.
// Not for calling anything; see ports/interface_call.h.

#include <array>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "ports/text.h"

namespace platform {

/// A globally unique identifier (RFC 9562); all zero by default.
struct Guid {
  std::uint32_t data1 = 0;
  std::uint16_t data2 = 0;
  std::uint16_t data3 = 0;
  std::array<std::uint8_t, 8> data4{};
  friend bool operator==(const Guid&, const Guid&) = default;
};

/// The types a property value may have, with the platform's numbers (VARTYPE).
enum class PropertyType : std::uint16_t {
  kEmpty = 0,
  kInt16 = 2,
  kInt32 = 3,
  kFloat = 4,
  kDouble = 5,
  kString = 8,
  kBoolean = 11,
  kInt8 = 16,
  kUInt8 = 17,
  kUInt16 = 18,
  kUInt32 = 19,
  kInt64 = 20,
  kUInt64 = 21,
  kInt = 22,
  kUInt = 23,
  kAnsiString = 30,
  kWideString = 31,
  kBlob = 65,
  kGuid = 72,
  kWideStringVector = 4127,
  kStringArray = 8200,
};

/// A value with its type. The payload's alternative follows the type: integers and booleans (-1 true, 0
/// false) as std::int64_t, kUInt64 as std::uint64_t, floats as double, texts as Text, kAnsiString as bytes
/// in code page 1252, lists as vectors of Text, kBlob as bytes.
struct PropertyValue {
  PropertyType type = PropertyType::kEmpty;
  std::variant<std::monostate, std::int64_t, std::uint64_t, double, Text, std::string, std::vector<Text>,
               Guid>
      payload;
};

/// A zero result is S_OK.
class PropertyValues {
 public:
  virtual ~PropertyValues() = default;

  /// Parses "{00000000-0000-0000-0000-000000000000}", either letter case. `guid` is written on S_OK only.
  virtual std::int32_t CLSIDFromString(const Text& text, Guid& guid) = 0;

  /// The text of a GUID, with braces and upper-case digits. On a platform that allocates it, the adapter
  /// copies it and frees the platform's buffer (CoTaskMemFree).
  virtual std::int32_t StringFromIID(const Guid& guid, Text& text) = 0;

  /// Converts `source` to `type` (kString, or kStringArray from a vector of wide strings). `target` is
  /// written on S_OK only.
  virtual std::int32_t PropVariantChangeType(PropertyValue& target, const PropertyValue& source,
                                             std::uint16_t flags, PropertyType type) = 0;

  /// Frees what the value holds and makes it empty.
  virtual std::int32_t PropVariantClear(PropertyValue& value) = 0;
};

}  // namespace platform
