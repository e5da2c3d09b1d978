#include "platform/win32/media/property_values.h"

#include "platform/win32/base/windows_api.h"

#include <objbase.h>
#include <propvarutil.h>

#include <bit>

#include "platform/win32/base/wide.h"
#include "platform/win32/media/property_variant.h"
#include "ports/interface_call.h"

namespace platform::win32 {
namespace {

constexpr std::size_t kGuidTextLength = 38;

/// A value of the system, cleared in the end.
struct ClearedVariant {
  ClearedVariant() { PropVariantInit(&value); }
  ~ClearedVariant() { ::PropVariantClear(&value); }
  ClearedVariant(const ClearedVariant&) = delete;
  ClearedVariant& operator=(const ClearedVariant&) = delete;
  PROPVARIANT value;
};

}  // namespace

// The system would take any other text for the name of a class.
std::int32_t Win32PropertyValues::CLSIDFromString(const Text& text, Guid& guid) {
  if (text.size() != kGuidTextLength || text.front() != u'{') return CO_E_CLASSSTRING;
  CLSID parsed{};
  const HRESULT result = ::CLSIDFromString(Wide(text), &parsed);
  if (result == S_OK) guid = std::bit_cast<Guid>(parsed);
  return result;
}

std::int32_t Win32PropertyValues::StringFromIID(const Guid& guid, Text& text) {
  LPOLESTR written = nullptr;
  const HRESULT result = ::StringFromIID(std::bit_cast<IID>(guid), &written);
  if (result != S_OK) return result;
  text = FromWide(static_cast<const wchar_t*>(written));
  CoTaskMemFree(written);
  return kSOk;
}

std::int32_t Win32PropertyValues::PropVariantChangeType(PropertyValue& target, const PropertyValue& source,
                                                        std::uint16_t flags, PropertyType type) {
  if (&target == &source) return kEInvalidArg;
  ClearedVariant from;
  ClearedVariant to;
  if (!MakeVariant(source, from.value)) return DISP_E_TYPEMISMATCH;
  const HRESULT result = ::PropVariantChangeType(
      &to.value, from.value, static_cast<PROPVAR_CHANGE_FLAGS>(flags), static_cast<VARTYPE>(type));
  const bool converted = result == S_OK && to.value.vt == static_cast<VARTYPE>(type);
  if (converted && ReadVariant(to.value, target)) return kSOk;
  return rest_.PropVariantChangeType(target, source, flags, type);
}

// The value is the program's own copy; the system's has been cleared where it was read.
std::int32_t Win32PropertyValues::PropVariantClear(PropertyValue& value) {
  value = PropertyValue{};
  return kSOk;
}

}  // namespace platform::win32
