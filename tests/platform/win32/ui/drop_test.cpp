#include "platform/win32/base/windows_api.h"

#include <ole2.h>
#include <shlobj.h>

#include <atomic>
#include <cstring>
#include <map>
#include <string>

#include "platform/win32/ui/drop_target.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

/// What another program drags: blocks of bytes by their formats.
class Dragged final : public ::IDataObject {
 public:
  std::map<UINT, std::string> blocks;
  bool is_damaged = false;

  void Put(UINT format, const std::wstring& text) {
    blocks[format] = std::string(reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * 2);
  }
  void PutFiles(const std::vector<std::wstring>& paths) {
    DROPFILES head{};
    head.pFiles = sizeof head;
    head.fWide = TRUE;
    std::wstring names;
    for (const std::wstring& path : paths) names += path + L'\0';
    names += L'\0';
    blocks[CF_HDROP] = std::string(reinterpret_cast<const char*>(&head), sizeof head) +
                       std::string(reinterpret_cast<const char*>(names.data()), names.size() * 2);
  }

  ~Dragged() {
    for (const HGLOBAL block : given) ::GlobalFree(block);
  }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override {
    *out = this;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  ULONG references = 1;
  /// What was given remains the source's, which is released for each.
  std::vector<HGLOBAL> given;
  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* wanted, STGMEDIUM* medium) override {
    if (is_damaged) return E_UNEXPECTED;
    const auto block = blocks.find(wanted->cfFormat);
    if (block == blocks.end()) return DV_E_FORMATETC;
    medium->tymed = TYMED_HGLOBAL;
    medium->pUnkForRelease = this;
    AddRef();
    medium->hGlobal = ::GlobalAlloc(GMEM_MOVEABLE, block->second.size());
    given.push_back(medium->hGlobal);
    std::memcpy(::GlobalLock(medium->hGlobal), block->second.data(), block->second.size());
    ::GlobalUnlock(medium->hGlobal);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* wanted) override {
    return blocks.contains(wanted->cfFormat) ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
};

class Win32DropTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    Open();
    drops.emplace(form, window->Handle(), loop);
    form.Accepts = [this](const controls::DropOffer& offer) {
      asked.push_back(offer);
      return accepts;
    };
    noted += form.Dropped.Subscribe([this](const controls::DropOffer& offer) { dropped.push_back(offer); });
    noted += form.DroppedUnderDialog.Subscribe([this](const controls::DropOffer&) { ++under_dialog; });
  }
  /// The pointer comes, moves and releases; gives the effects that were shown for each.
  std::vector<DWORD> Drag(DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_LINK | DROPEFFECT_MOVE) {
    std::vector<DWORD> effects(3, allowed);
    ::IDropTarget& target = drops->Object();
    target.DragEnter(&data, MK_LBUTTON, {10, 10}, &effects[0]);
    target.DragOver(MK_LBUTTON, {20, 20}, &effects[1]);
    target.Drop(&data, 0, {20, 20}, &effects[2]);
    return effects;
  }
  static UINT AddressFormat() { return ::RegisterClipboardFormatW(L"UniformResourceLocatorW"); }

  Dragged data;
  std::optional<DropTarget> drops;
  bool accepts = true;
  std::vector<controls::DropOffer> asked;
  std::vector<controls::DropOffer> dropped;
  int under_dialog = 0;
  controls::Subscriptions noted;
};

TEST_F(Win32DropTest, FilesAreDroppedFromTheLoopWithTheirFullPaths) {
  data.PutFiles({L"C:\\Musik\\Köln.m3u", L"D:\\zwei.pls"});
  EXPECT_EQ(Drag(), std::vector<DWORD>(3, DROPEFFECT_COPY));
  EXPECT_TRUE(dropped.empty());
  ASSERT_TRUE(Until([this] { return !dropped.empty(); }));
  EXPECT_EQ(dropped[0].files, (std::vector<Text>{u"C:\\Musik\\Köln.m3u", u"D:\\zwei.pls"}));
  EXPECT_TRUE(dropped[0].addresses.empty());
}

TEST_F(Win32DropTest, AddressComesWithItsText) {
  data.Put(AddressFormat(), L"http://radio.example/live");
  data.Put(CF_UNICODETEXT, L"Radio Köln");
  Drag();
  ASSERT_TRUE(Until([this] { return !dropped.empty(); }));
  EXPECT_EQ(dropped[0].addresses, std::vector<Text>{u"http://radio.example/live"});
  EXPECT_EQ(dropped[0].text, u"Radio Köln");
}

TEST_F(Win32DropTest, SourceGetsBackWhatItGaveUnlocked) {
  data.PutFiles({L"C:\\a.m3u"});
  data.Put(CF_UNICODETEXT, L"Radio");
  Drag();
  EXPECT_EQ(data.references, 1U);
  ASSERT_FALSE(data.given.empty());
  for (const HGLOBAL block : data.given) EXPECT_EQ(::GlobalFlags(block) & GMEM_LOCKCOUNT, 0U);
}

TEST_F(Win32DropTest, SystemKnowsTheTargetAsLongAsItLives) {
  EXPECT_EQ(::RegisterDragDrop(window->Handle(), &drops->Object()), DRAGDROP_E_ALREADYREGISTERED);
  void* known = nullptr;
  EXPECT_EQ(drops->Object().QueryInterface(IID_IDropTarget, &known), S_OK);
  EXPECT_EQ(known, &drops->Object());
  const ULONG left = drops->Object().Release();
  EXPECT_EQ(drops->Object().AddRef(), left + 1);
  EXPECT_EQ(drops->Object().Release(), left);
  EXPECT_GE(left, 1U) << "the window's";
  EXPECT_EQ(drops->Object().QueryInterface(IID_IDataObject, &known), E_NOINTERFACE);
  EXPECT_EQ(known, nullptr);
  drops.reset();
  EXPECT_EQ(::RevokeDragDrop(window->Handle()), DRAGDROP_E_NOTREGISTERED);
}

TEST_F(Win32DropTest, TextOfAnotherProgramNeedNotEndAndIsCut) {
  data.blocks[CF_UNICODETEXT] = std::string("a\0b\0c\0", 6);
  Drag();
  data.Put(CF_UNICODETEXT, std::wstring(100000, L'x'));
  Drag();
  ASSERT_TRUE(Until([this] { return dropped.size() == 2; }));
  EXPECT_EQ(dropped[0].text, u"abc");
  EXPECT_EQ(dropped[1].text.size(), 65536U);
}

TEST_F(Win32DropTest, PointerShowsThatTheProgramCannotUseIt) {
  data.Put(CF_UNICODETEXT, L"irgendwas");
  accepts = false;
  EXPECT_EQ(Drag(), std::vector<DWORD>(3, DROPEFFECT_NONE));
  loop.ProcessPendingMessages();
  EXPECT_TRUE(dropped.empty());
  EXPECT_EQ(asked.front().text, u"irgendwas");
}

TEST_F(Win32DropTest, SourceThatOnlyMovesIsRefusedBecauseItWouldDeleteItsFile) {
  data.PutFiles({L"C:\\a.m3u"});
  EXPECT_EQ(Drag(DROPEFFECT_MOVE), std::vector<DWORD>(3, DROPEFFECT_NONE));
  EXPECT_EQ(Drag(DROPEFFECT_LINK), std::vector<DWORD>(3, DROPEFFECT_LINK));
}

TEST_F(Win32DropTest, NothingIsTakenUnderADialogOrWhileTheWindowCloses) {
  data.PutFiles({L"C:\\a.m3u"});
  ::EnableWindow(window->Handle(), FALSE);
  EXPECT_EQ(Drag(), std::vector<DWORD>(3, DROPEFFECT_NONE));
  ::EnableWindow(window->Handle(), TRUE);
  Drag();
  ::EnableWindow(window->Handle(), FALSE);
  EXPECT_TRUE(Until([this] { return under_dialog == 1; })) << "the dialog came before its turn";
  ::EnableWindow(window->Handle(), TRUE);
  form.Close();
  EXPECT_EQ(Drag(), std::vector<DWORD>(3, DROPEFFECT_NONE));
}

TEST_F(Win32DropTest, SourceThatGivesNothingIsAskedForNothingMore) {
  data.is_damaged = true;
  Drag();
  ASSERT_TRUE(Until([this] { return !dropped.empty(); }));
  EXPECT_TRUE(dropped[0].files.empty() && dropped[0].addresses.empty() && dropped[0].text.empty());
}

TEST_F(Win32DropTest, SystemMayKeepTheTargetLongerThanTheWindow) {
  ::IDropTarget& target = drops->Object();
  target.AddRef();
  drops.reset();
  data.PutFiles({L"C:\\a.m3u"});
  DWORD effect = DROPEFFECT_COPY;
  target.DragEnter(&data, 0, {0, 0}, &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
  EXPECT_EQ(target.Release(), 0U);
}

}  // namespace
}  // namespace platform::win32
