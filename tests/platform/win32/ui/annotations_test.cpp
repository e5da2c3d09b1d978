// What the windows' controls report to screen readers by the system's service for annotations. A service of
// the test's own takes its place, because Wine's does nothing.
#include "platform/win32/base/windows_api.h"

#include <initguid.h>
#include <objbase.h>
#include <oleacc.h>

#include <map>
#include <string>

#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

constexpr GUID kLiveSettingProperty = {
    0xc12bcd8e, 0x2a8e, 0x4950, {0x8a, 0xe7, 0x36, 0x25, 0x11, 0x1d, 0x58, 0xeb}};

/// What is known of each window.
struct Annotated {
  std::map<HWND, std::wstring> names;
  std::map<HWND, LONG> live;
};

bool IsClientItself(DWORD object, DWORD child) {
  return object == static_cast<DWORD>(OBJID_CLIENT) && child == CHILDID_SELF;
}

class OwnService final : public ::IAccPropServices {
 public:
  explicit OwnService(Annotated& annotated) : annotated_(annotated) {}
  virtual ~OwnService() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = id == IID_IUnknown || id == IID_IAccPropServices ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override { return --references_; }
  [[nodiscard]] ULONG References() const { return references_; }

  HRESULT STDMETHODCALLTYPE SetHwndPropStr(HWND window, DWORD object, DWORD child, MSAAPROPID property,
                                           LPCWSTR text) override {
    if (IsClientItself(object, child) && property == PROPID_ACC_NAME) annotated_.names[window] = text;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetHwndProp(HWND window, DWORD object, DWORD child, MSAAPROPID property,
                                        VARIANT value) override {
    const bool is_live = IsClientItself(object, child) && property == kLiveSettingProperty;
    if (is_live && V_VT(&value) == VT_I4) annotated_.live[window] = V_I4(&value);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ClearHwndProps(HWND window, DWORD object, DWORD child,
                                           const MSAAPROPID* properties, int count) override {
    if (::IsWindow(window) == 0) return E_INVALIDARG;
    for (int at = 0; at < count && IsClientItself(object, child); ++at) {
      if (properties[at] == PROPID_ACC_NAME) annotated_.names.erase(window);
      if (properties[at] == kLiveSettingProperty) annotated_.live.erase(window);
    }
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE SetPropValue(const BYTE*, DWORD, MSAAPROPID, VARIANT) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetPropServer(const BYTE*, DWORD, const MSAAPROPID*, int, ::IAccPropServer*,
                                          AnnoScope) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ClearProps(const BYTE*, DWORD, const MSAAPROPID*, int) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetHwndPropServer(HWND, DWORD, DWORD, const MSAAPROPID*, int, ::IAccPropServer*,
                                              AnnoScope) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ComposeHwndIdentityString(HWND, DWORD, DWORD, BYTE**, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DecomposeHwndIdentityString(const BYTE*, DWORD, HWND*, DWORD*, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetHmenuProp(HMENU, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetHmenuPropStr(HMENU, DWORD, MSAAPROPID, LPCWSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetHmenuPropServer(HMENU, DWORD, const MSAAPROPID*, int, ::IAccPropServer*,
                                               AnnoScope) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ClearHmenuProps(HMENU, DWORD, const MSAAPROPID*, int) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ComposeHmenuIdentityString(HMENU, DWORD, BYTE**, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DecomposeHmenuIdentityString(const BYTE*, DWORD, HMENU*, DWORD*) override {
    return E_NOTIMPL;
  }

 private:
  Annotated& annotated_;
  ULONG references_ = 1;
};

class OwnFactory final : public ::IClassFactory {
 public:
  explicit OwnFactory(OwnService& service) : service_(service) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
    return *object == nullptr ? E_NOINTERFACE : S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(::IUnknown* /*outer*/, REFIID id, void** object) override {
    return service_.QueryInterface(id, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*locks*/) override { return S_OK; }

 private:
  OwnService& service_;
};

class Win32AnnotationsTest : public Win32WindowTest {
 protected:
  Win32AnnotationsTest() {
    EXPECT_EQ(::CoRegisterClassObject(CLSID_AccPropServices, &factory_, CLSCTX_INPROC_SERVER,
                                      REGCLS_MULTIPLEUSE, &registered_),
              S_OK);
  }
  ~Win32AnnotationsTest() override {
    // It uses what is declared here.
    window.reset();
    ::CoRevokeClassObject(registered_);
  }

  Annotated annotated;
  OwnService service{annotated};
  controls::TextBox field;
  controls::Label label;

 private:
  OwnFactory factory_{service};
  DWORD registered_ = 0;
};

TEST_F(Win32AnnotationsTest, FieldHasTheNameOfItsLabelAlsoWhenThatChanges) {
  label.SetCaption(u"Straße");
  inventory = {{"label", &label}, {"field", &field, nullptr, {.named_by = &label}}};
  Open();
  EXPECT_EQ(annotated.names, (std::map<HWND, std::wstring>{{Of(field), L"Straße"}}));
  label.SetCaption(u"Link");
  EXPECT_EQ(annotated.names[Of(field)], L"Link");
}

TEST_F(Win32AnnotationsTest, NameOfItsOwnGoesBeforeTheLabels) {
  label.SetCaption(u"Lautstärke");
  inventory = {{"label", &label},
               {"field", &field, nullptr, {.named_by = &label, .accessible_name = u"Lautstärke in Prozent"}}};
  Open();
  label.SetCaption(u"Ton");
  EXPECT_EQ(annotated.names, (std::map<HWND, std::wstring>{{Of(field), L"Lautstärke in Prozent"}}));
}

TEST_F(Win32AnnotationsTest, StatusLineIsALiveRegionThatInterruptsNothing) {
  controls::Label caption;
  label.SetLook(controls::LabelLook::kStatusLine);
  inventory = {{"caption", &caption}, {"label", &label}};
  Open();
  EXPECT_EQ(annotated.live, (std::map<HWND, LONG>{{Of(label), 1}}));
}

TEST_F(Win32AnnotationsTest, NothingIsKnownOfControlsThatAreGone) {
  label.SetLook(controls::LabelLook::kStatusLine);
  inventory = {{"label", &label}, {"field", &field, nullptr, {.accessible_name = u"Name"}}};
  Open();
  ASSERT_EQ(annotated.names.size() + annotated.live.size(), 2U);
  window.reset();
  EXPECT_TRUE(annotated.names.empty());
  EXPECT_TRUE(annotated.live.empty());
  EXPECT_EQ(service.References(), 1U) << "the test's own";
}

TEST_F(Win32AnnotationsTest, FieldInsideAComboBoxHasTheNameToo) {
  controls::ComboBox combo;
  inventory = {{"combo", &combo, nullptr, {.accessible_name = u"Genre"}}};
  Open();
  HWND const inside = ::GetWindow(Of(combo), GW_CHILD);
  EXPECT_EQ(annotated.names[Of(combo)], L"Genre");
  EXPECT_EQ(annotated.names[inside], L"Genre");
  window.reset();
  EXPECT_FALSE(annotated.names.contains(inside));
}

}  // namespace
}  // namespace platform::win32
