#include "platform/win32/media/property_variant.h"

#include "platform/win32/base/windows_api.h"

#include <oleauto.h>
#include <propidl.h>

#include <bit>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

using enum PropertyType;

/// A copy of the bytes that the system frees with the value, with two zero bytes behind them.
void* Allocated(const void* bytes, std::size_t size) {
  void* copy = CoTaskMemAlloc(size + 2);
  if (copy == nullptr) return nullptr;
  if (size != 0) std::memcpy(copy, bytes, size);
  std::memset(static_cast<char*>(copy) + size, 0, 2);
  return copy;
}

LPWSTR AllocatedText(const Text& text) {
  return static_cast<LPWSTR>(Allocated(text.data(), text.size() * sizeof(char16_t)));
}

bool MakeInteger(PropertyType type, std::int64_t number, PROPVARIANT& target) {
  switch (type) {
    case kInt8:
      target.cVal = static_cast<CHAR>(number);
      return true;
    case kUInt8:
      target.bVal = static_cast<UCHAR>(number);
      return true;
    case kInt16:
      target.iVal = static_cast<SHORT>(number);
      return true;
    case kUInt16:
      target.uiVal = static_cast<USHORT>(number);
      return true;
    case kInt32:
    case kInt:
      target.lVal = static_cast<LONG>(number);
      return true;
    case kUInt32:
    case kUInt:
      target.ulVal = static_cast<ULONG>(number);
      return true;
    case kInt64:
      target.hVal.QuadPart = number;
      return true;
    case kBoolean:
      target.boolVal = number != 0 ? VARIANT_TRUE : VARIANT_FALSE;
      return true;
    default:
      return false;
  }
}

bool MakeDouble(PropertyType type, double number, PROPVARIANT& target) {
  if (type == kFloat) target.fltVal = static_cast<float>(number);
  if (type == kDouble) target.dblVal = number;
  return type == kFloat || type == kDouble;
}

bool MakeText(PropertyType type, const Text& text, PROPVARIANT& target) {
  if (type == kString) {
    target.bstrVal = SysAllocStringLen(WideData(text), static_cast<UINT>(text.size()));
    return target.bstrVal != nullptr;
  }
  if (type != kWideString) return false;
  target.pwszVal = AllocatedText(text);
  return target.pwszVal != nullptr;
}

bool MakeBytes(PropertyType type, const std::string& bytes, PROPVARIANT& target) {
  if (type == kAnsiString) {
    target.pszVal = static_cast<LPSTR>(Allocated(bytes.data(), bytes.size()));
    return target.pszVal != nullptr;
  }
  if (type != kBlob) return false;
  target.blob.cbSize = static_cast<ULONG>(bytes.size());
  target.blob.pBlobData = static_cast<BYTE*>(Allocated(bytes.data(), bytes.size()));
  return target.blob.pBlobData != nullptr;
}

bool MakeVector(const std::vector<Text>& texts, PROPVARIANT& target) {
  auto* const elements = static_cast<LPWSTR*>(CoTaskMemAlloc(texts.size() * sizeof(LPWSTR) + 1));
  if (elements == nullptr) return false;
  for (std::size_t at = 0; at < texts.size(); ++at) elements[at] = AllocatedText(texts[at]);
  target.calpwstr.cElems = static_cast<ULONG>(texts.size());
  target.calpwstr.pElems = elements;
  return true;
}

bool MakeArray(const std::vector<Text>& texts, PROPVARIANT& target) {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(texts.size()));
  if (array == nullptr) return false;
  BSTR* elements = nullptr;
  if (SafeArrayAccessData(array, reinterpret_cast<void**>(&elements)) != S_OK) {
    SafeArrayDestroy(array);
    return false;
  }
  for (std::size_t at = 0; at < texts.size(); ++at) {
    elements[at] = SysAllocStringLen(WideData(texts[at]), static_cast<UINT>(texts[at].size()));
  }
  SafeArrayUnaccessData(array);
  target.parray = array;
  return true;
}

bool MakeTexts(PropertyType type, const std::vector<Text>& texts, PROPVARIANT& target) {
  if (type == kWideStringVector) return MakeVector(texts, target);
  return type == kStringArray && MakeArray(texts, target);
}

bool MakeGuid(PropertyType type, const Guid& guid, PROPVARIANT& target) {
  if (type != kGuid) return false;
  target.puuid = static_cast<CLSID*>(Allocated(&guid, sizeof guid));
  return target.puuid != nullptr;
}

/// Writes the payload's member of the union.
struct PayloadWriter {
  PropertyType type;
  PROPVARIANT& target;
  bool operator()(std::monostate) const { return type == kEmpty; }
  bool operator()(std::int64_t number) const { return MakeInteger(type, number, target); }
  bool operator()(std::uint64_t number) const {
    target.uhVal.QuadPart = number;
    return type == kUInt64;
  }
  bool operator()(double number) const { return MakeDouble(type, number, target); }
  bool operator()(const Text& text) const { return MakeText(type, text, target); }
  bool operator()(const std::string& bytes) const { return MakeBytes(type, bytes, target); }
  bool operator()(const std::vector<Text>& texts) const { return MakeTexts(type, texts, target); }
  bool operator()(const Guid& guid) const { return MakeGuid(type, guid, target); }
};

std::optional<std::int64_t> IntegerOf(const PROPVARIANT& source) {
  switch (source.vt) {
    case VT_I1:
      // Plain char; signed in the value.
      return static_cast<signed char>(source.cVal);
    case VT_UI1:
      return source.bVal;
    case VT_I2:
      return source.iVal;
    case VT_UI2:
      return source.uiVal;
    case VT_I4:
    case VT_INT:
      return source.lVal;
    case VT_UI4:
    case VT_UINT:
      return source.ulVal;
    case VT_I8:
      return source.hVal.QuadPart;
    case VT_BOOL:
      return source.boolVal != VARIANT_FALSE ? -1 : 0;
    default:
      return std::nullopt;
  }
}

std::vector<Text> TextsOfVector(const PROPVARIANT& source) {
  std::vector<Text> texts;
  for (ULONG at = 0; at < source.calpwstr.cElems; ++at) {
    texts.push_back(FromWide(static_cast<const wchar_t*>(source.calpwstr.pElems[at])));
  }
  return texts;
}

Text TextOfBstr(BSTR text) { return FromWide(std::wstring_view(text, SysStringLen(text))); }

std::optional<std::vector<Text>> TextsOfArray(SAFEARRAY* array) {
  LONG first = 0;
  LONG last = -1;
  const bool one_row = array != nullptr && SafeArrayGetDim(array) == 1 &&
                       SafeArrayGetLBound(array, 1, &first) == S_OK &&
                       SafeArrayGetUBound(array, 1, &last) == S_OK;
  BSTR* elements = nullptr;
  if (!one_row || SafeArrayAccessData(array, reinterpret_cast<void**>(&elements)) != S_OK)
    return std::nullopt;
  std::vector<Text> texts;
  for (LONG at = first; at <= last; ++at) texts.push_back(TextOfBstr(elements[at - first]));
  SafeArrayUnaccessData(array);
  return texts;
}

template <typename Payload>
bool Store(PropertyValue& value, const PROPVARIANT& source, Payload payload) {
  value = PropertyValue{PropertyType{source.vt}, std::move(payload)};
  return true;
}

bool ReadTexts(const PROPVARIANT& source, PropertyValue& value) {
  if (source.vt == (VT_VECTOR | VT_LPWSTR)) return Store(value, source, TextsOfVector(source));
  if (source.vt != (VT_ARRAY | VT_BSTR)) return false;
  auto texts = TextsOfArray(source.parray);
  return texts && Store(value, source, *std::move(texts));
}

}  // namespace

bool MakeVariant(const PropertyValue& value, PROPVARIANT& target) {
  if (!std::visit(PayloadWriter{value.type, target}, value.payload)) {
    std::memset(&target, 0, sizeof target);
    return false;
  }
  target.vt = static_cast<VARTYPE>(value.type);
  return true;
}

bool ReadVariant(const PROPVARIANT& source, PropertyValue& value) {
  if (const auto number = IntegerOf(source)) return Store(value, source, *number);
  switch (source.vt) {
    case VT_EMPTY:
      value = {};
      return true;
    case VT_UI8:
      return Store(value, source, std::uint64_t{source.uhVal.QuadPart});
    case VT_R4:
      return Store(value, source, double{source.fltVal});
    case VT_R8:
      return Store(value, source, source.dblVal);
    case VT_BSTR:
      return Store(value, source, TextOfBstr(source.bstrVal));
    case VT_LPWSTR:
      return Store(value, source, FromWide(static_cast<const wchar_t*>(source.pwszVal)));
    case VT_LPSTR:
      return Store(value, source, std::string(source.pszVal == nullptr ? "" : source.pszVal));
    case VT_BLOB:
      return Store(value, source,
                   std::string(reinterpret_cast<const char*>(source.blob.pBlobData), source.blob.cbSize));
    case VT_CLSID:
      return source.puuid != nullptr && Store(value, source, std::bit_cast<Guid>(*source.puuid));
    default:
      return ReadTexts(source, value);
  }
}

}  // namespace platform::win32
