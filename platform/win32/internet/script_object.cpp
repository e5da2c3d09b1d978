#include "platform/win32/internet/script_object.h"

#include "platform/win32/base/windows_api.h"

#include <oleauto.h>

#include <utility>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

/// Values for a call, last one first, as the system wants them. Each is empty until it is set.
class ScriptArguments {
 public:
  explicit ScriptArguments(const std::vector<ScriptValue>& values) : variants_(values.size()) {
    for (std::size_t i = 0; i < values.size(); ++i) Set(variants_[values.size() - 1 - i], values[i]);
  }
  ~ScriptArguments() {
    for (VARIANT& variant : variants_) ::VariantClear(&variant);
  }
  ScriptArguments(const ScriptArguments&) = delete;
  ScriptArguments& operator=(const ScriptArguments&) = delete;

  [[nodiscard]] DISPPARAMS Parameters() {
    return {variants_.data(), nullptr, static_cast<UINT>(variants_.size()), 0};
  }

 private:
  static void Set(VARIANT& variant, const ScriptValue& value) {
    if (const auto* const number = std::get_if<std::int32_t>(&value)) {
      V_VT(&variant) = VT_I4;
      V_I4(&variant) = *number;
    } else if (const auto* const truth = std::get_if<bool>(&value)) {
      V_VT(&variant) = VT_BOOL;
      V_BOOL(&variant) = *truth ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (const auto* const text = std::get_if<Text>(&value)) {
      V_VT(&variant) = VT_BSTR;
      V_BSTR(&variant) = ::SysAllocStringLen(WideData(*text), static_cast<UINT>(text->size()));
    }
  }

  std::vector<VARIANT> variants_;
};

std::string BytesOf(SAFEARRAY* array) {
  void* data = nullptr;
  LONG lowest = 0;
  LONG highest = -1;
  if (array == nullptr || ::SafeArrayGetDim(array) != 1 || ::SafeArrayGetElemsize(array) != 1) return {};
  if (FAILED(::SafeArrayGetLBound(array, 1, &lowest)) || FAILED(::SafeArrayGetUBound(array, 1, &highest)))
    return {};
  if (FAILED(::SafeArrayAccessData(array, &data))) return {};
  std::string bytes(static_cast<const char*>(data), static_cast<std::size_t>(highest - lowest + 1));
  ::SafeArrayUnaccessData(array);
  return bytes;
}

ScriptValue ValueOf(const VARIANT& variant) {
  switch (V_VT(&variant)) {
    case VT_I2:
      return std::int32_t{V_I2(&variant)};
    case VT_I4:
      return static_cast<std::int32_t>(V_I4(&variant));
    case VT_BOOL:
      return V_BOOL(&variant) != VARIANT_FALSE;
    case VT_BSTR:
      return FromWide(std::wstring_view(V_BSTR(&variant), ::SysStringLen(V_BSTR(&variant))));
    case VT_ARRAY | VT_UI1:
      return BytesOf(V_ARRAY(&variant));
    default:
      return {};
  }
}

}  // namespace

bool ScriptObject::IsKnown(const Text& class_name) {
  CLSID id;
  return SUCCEEDED(::CLSIDFromProgID(Wide(class_name), &id));
}

ScriptObject::ScriptObject(const Text& class_name) {
  CLSID id;
  if (FAILED(::CLSIDFromProgID(Wide(class_name), &id))) return;
  void* object = nullptr;
  if (SUCCEEDED(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &object)))
    object_ = static_cast<::IDispatch*>(object);
}

ScriptObject::~ScriptObject() {
  if (object_ != nullptr) object_->Release();
}

std::optional<ScriptValue> ScriptObject::Call(const Text& name, const std::vector<ScriptValue>& arguments) {
  return Invoke(name, DISPATCH_METHOD, arguments);
}

std::optional<ScriptValue> ScriptObject::Get(const Text& name) {
  return Invoke(name, DISPATCH_PROPERTYGET, {});
}

std::optional<ScriptValue> ScriptObject::Invoke(const Text& name, unsigned short kind,
                                                const std::vector<ScriptValue>& arguments) {
  if (object_ == nullptr) return std::nullopt;
  DISPID member = 0;
  std::wstring wide(name.begin(), name.end());
  wchar_t* names = wide.data();
  if (FAILED(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member))) return std::nullopt;
  ScriptArguments given(arguments);
  DISPPARAMS parameters = given.Parameters();
  VARIANT result{};
  const HRESULT called =
      object_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, &result, nullptr, nullptr);
  std::optional<ScriptValue> value;
  if (SUCCEEDED(called)) value = ValueOf(result);
  ::VariantClear(&result);
  return value;
}

}  // namespace platform::win32
