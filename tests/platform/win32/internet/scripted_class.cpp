#include "tests/platform/win32/internet/scripted_class.h"

#include "platform/win32/base/windows_api.h"

#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <cwchar>
#include <utility>

namespace test_support {
namespace {

constexpr CLSID kClassId = {0x5d0f7a1e, 0x31b2, 0x4c55, {0x9e, 0x6a, 0x1f, 0x08, 0x77, 0xc4, 0x2b, 0x93}};
constexpr const wchar_t* kNameKey = L"Software\\Classes\\Funkhaus.ScriptedRequest";
constexpr const wchar_t* kClassKey = L"Software\\Classes\\CLSID\\{5D0F7A1E-31B2-4C55-9E6A-1F0877C42B93}";
constexpr std::array kMembers = {
    "setOption", "open", "send", "abort", "readyState", "getAllResponseHeaders", "responseBody"};

std::mutex current_mutex;
std::shared_ptr<ScriptedAnswers> current;

std::string AsciiOf(const wchar_t* text) {
  std::string ascii;
  for (; *text != 0; ++text) ascii += static_cast<char>(*text);
  return ascii;
}

std::string ArgumentText(const VARIANT& argument) {
  switch (V_VT(&argument)) {
    case VT_I4:
      return std::to_string(V_I4(&argument));
    case VT_BOOL:
      return V_BOOL(&argument) == VARIANT_TRUE ? "true" : "false";
    case VT_BSTR:
      return AsciiOf(V_BSTR(&argument));
    default:
      return "?";
  }
}

class ScriptedObject final : public ::IDispatch {
 public:
  explicit ScriptedObject(std::shared_ptr<ScriptedAnswers> answers) : answers_(std::move(answers)) {
    ++answers_->objects;
  }
  virtual ~ScriptedObject() { --answers_->objects; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override {
    const auto found = std::find(kMembers.begin(), kMembers.end(), AsciiOf(names[0]));
    *id = static_cast<DISPID>(found - kMembers.begin());
    return found == kMembers.end() ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    std::string call = kMembers.at(static_cast<std::size_t>(id));
    const std::string member = call;
    for (UINT at = parameters->cArgs; at > 0; --at) call += " " + ArgumentText(parameters->rgvarg[at - 1]);
    if (id < 4) answers_->Note(call);
    if (!answers_->Allows(member)) return E_FAIL;
    if (member == "readyState") {
      V_VT(result) = VT_I4;
      V_I4(result) = answers_->state;
    } else if (member == "getAllResponseHeaders") {
      V_VT(result) = VT_BSTR;
      V_BSTR(result) = ::SysAllocStringLen(reinterpret_cast<const wchar_t*>(answers_->headers.data()),
                                           static_cast<UINT>(answers_->headers.size()));
    } else if (member == "responseBody" && answers_->body) {
      answers_->body(*result);
    }
    return S_OK;
  }

 private:
  const std::shared_ptr<ScriptedAnswers> answers_;
  std::atomic<ULONG> references_ = 1;
};

class ScriptedFactory final : public ::IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
    return *object == nullptr ? E_NOINTERFACE : S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(::IUnknown*, REFIID id, void** object) override {
    std::shared_ptr<ScriptedAnswers> answers;
    {
      const std::lock_guard lock(current_mutex);
      answers = current;
    }
    if (!answers) return E_FAIL;
    auto* const made = new ScriptedObject(answers);
    const HRESULT result = made->QueryInterface(id, object);
    made->Release();
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

/// The user's classes, and the machine's, for Wine knows no others.
const std::array kRoots = {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};

void SetKey(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
  const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  for (const HKEY root : kRoots) ::RegSetKeyValueW(root, key.c_str(), name, REG_SZ, value.c_str(), size);
}

}  // namespace

void ScriptedAnswers::SetOnCall(const OnCall& on_call) {
  const std::lock_guard lock(mutex_);
  on_call_ = on_call;
}

bool ScriptedAnswers::Allows(const std::string& member) const {
  OnCall on_call;
  {
    const std::lock_guard lock(mutex_);
    on_call = on_call_;
  }
  return !on_call || on_call(member);
}

std::vector<std::string> ScriptedAnswers::Calls() const {
  const std::lock_guard lock(mutex_);
  return calls_;
}

void ScriptedAnswers::Note(const std::string& call) {
  const std::lock_guard lock(mutex_);
  calls_.push_back(call);
}

void SetBytes(tagVARIANT& value, const std::string& bytes) {
  V_VT(&value) = VT_ARRAY | VT_UI1;
  V_ARRAY(&value) = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  void* data = nullptr;
  ::SafeArrayAccessData(V_ARRAY(&value), &data);
  std::memcpy(data, bytes.data(), bytes.size());
  ::SafeArrayUnaccessData(V_ARRAY(&value));
}

// The system takes the running program for the library of the class.
ScriptedClass::ScriptedClass(const std::shared_ptr<ScriptedAnswers>& answers) {
  std::wstring program(MAX_PATH, L'\0');
  program.resize(::GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
  SetKey(std::wstring(kNameKey) + L"\\CLSID", nullptr, std::wcsrchr(kClassKey, L'\\') + 1);
  SetKey(std::wstring(kClassKey) + L"\\InprocServer32", nullptr, program);
  SetKey(std::wstring(kClassKey) + L"\\InprocServer32", L"ThreadingModel", L"Both");
  const std::lock_guard lock(current_mutex);
  current = answers;
}

ScriptedClass::~ScriptedClass() {
  const std::lock_guard lock(current_mutex);
  current.reset();
  for (const HKEY root : kRoots) {
    ::RegDeleteTreeW(root, kNameKey);
    ::RegDeleteTreeW(root, kClassKey);
  }
}

}  // namespace test_support

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE
    DllGetClassObject(REFCLSID class_id, REFIID id, void** object) {
  static test_support::ScriptedFactory factory;
  if (class_id != test_support::kClassId) return CLASS_E_CLASSNOTAVAILABLE;
  return factory.QueryInterface(id, object);
}
