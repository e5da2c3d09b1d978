#include "platform/win32/ui/drop_target.h"

#include "platform/win32/base/windows_api.h"

#include <ole2.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/window.h"

namespace platform::win32 {
namespace {

constexpr std::size_t kLongestText = 65536;

/// One form of what is dragged, as a block of memory, while it is read.
class Medium {
 public:
  Medium(IDataObject& data, CLIPFORMAT format) {
    FORMATETC wanted{format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    has_ = SUCCEEDED(data.GetData(&wanted, &medium_)) && medium_.tymed == TYMED_HGLOBAL;
  }
  ~Medium() {
    if (has_) ::ReleaseStgMedium(&medium_);
  }
  Medium(const Medium&) = delete;
  Medium& operator=(const Medium&) = delete;

  [[nodiscard]] HGLOBAL Memory() const { return has_ ? medium_.hGlobal : nullptr; }

 private:
  STGMEDIUM medium_{};
  bool has_ = false;
};

Text TextIn(IDataObject& data, CLIPFORMAT format) {
  const Medium medium(data, format);
  if (medium.Memory() == nullptr) return {};
  const auto* units = static_cast<const wchar_t*>(::GlobalLock(medium.Memory()));
  if (units == nullptr) return {};
  const std::size_t most =
      std::min<std::size_t>(::GlobalSize(medium.Memory()) / sizeof(wchar_t), kLongestText);
  std::size_t length = 0;
  while (length < most && units[length] != L'\0') ++length;
  Text text(units, units + length);
  ::GlobalUnlock(medium.Memory());
  return text;
}

std::vector<Text> FilesIn(IDataObject& data) {
  const Medium medium(data, CF_HDROP);
  std::vector<Text> files;
  if (medium.Memory() == nullptr) return files;
  const auto drop = static_cast<HDROP>(medium.Memory());
  const UINT count = ::DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
  for (UINT file = 0; file < count; ++file) {
    Text path(::DragQueryFileW(drop, file, nullptr, 0) + 1, u'\0');
    path.resize(::DragQueryFileW(drop, file, WideBuffer(path.data()), static_cast<UINT>(path.size())));
    files.push_back(std::move(path));
  }
  return files;
}

/// The object that the system calls; it outlives the DropTarget when the system still holds it.
class OleTarget final : public ::IDropTarget {
 public:
  explicit OleTarget(DropTarget& target) : target_(&target) {}
  void Leave() { target_ = nullptr; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
    const bool known = IsEqualIID(id, IID_IUnknown) != 0 || IsEqualIID(id, IID_IDropTarget) != 0;
    *out = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE DragEnter(::IDataObject* data, DWORD /*keys*/, POINTL /*place*/,
                                      DWORD* effect) override {
    is_taken_ = target_ != nullptr && data != nullptr && target_->IsTaken(OfferOf(*data));
    *effect = Effect(*effect);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DragOver(DWORD /*keys*/, POINTL /*place*/, DWORD* effect) override {
    *effect = Effect(*effect);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DragLeave() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Drop(::IDataObject* data, DWORD keys, POINTL place, DWORD* effect) override {
    DragEnter(data, keys, place, effect);
    if (*effect != DROPEFFECT_NONE) target_->Take(OfferOf(*data));
    return S_OK;
  }

 private:
  virtual ~OleTarget() = default;
  /// A mere move would have the giver delete what it gave.
  [[nodiscard]] DWORD Effect(DWORD possible) const {
    if (!is_taken_) return DROPEFFECT_NONE;
    if ((possible & DROPEFFECT_COPY) != 0) return DROPEFFECT_COPY;
    return possible & DROPEFFECT_LINK;
  }

  DropTarget* target_;
  std::atomic<ULONG> references_{1};
  bool is_taken_ = false;
};

}  // namespace

controls::DropOffer OfferOf(::IDataObject& data) {
  static const auto kAddress =
      static_cast<CLIPFORMAT>(::RegisterClipboardFormatW(L"UniformResourceLocatorW"));
  controls::DropOffer offer;
  offer.files = FilesIn(data);
  Text address = TextIn(data, kAddress);
  if (!address.empty()) offer.addresses.push_back(std::move(address));
  offer.text = TextIn(data, CF_UNICODETEXT);
  return offer;
}

DropTarget::DropTarget(controls::Form& form, HWND window, Win32MessageLoop& loop)
    : form_(form), window_(window), loop_(loop), target_(new OleTarget(*this)) {
  ::RegisterDragDrop(window_, target_);
}

DropTarget::~DropTarget() {
  ::RevokeDragDrop(window_);
  static_cast<OleTarget*>(target_)->Leave();
  target_->Release();
}

bool DropTarget::IsTaken(const controls::DropOffer& offer) const {
  return !IsBlockedByDialog(window_) && !form_.Closing() && form_.Accepts && form_.Accepts(offer);
}

void DropTarget::Take(controls::DropOffer offer) {
  loop_.HandOver(lifetime_, [this, offer = std::move(offer)] {
    (IsBlockedByDialog(window_) ? form_.DroppedUnderDialog : form_.Dropped).Raise(offer);
  });
}

void DropTarget::Open(const Text& argument) {
  if (argument.empty()) return;
  controls::DropOffer offer;
  const bool is_address = argument.find(u"://") != Text::npos;
  (is_address ? offer.addresses : offer.files).push_back(argument);
  Take(std::move(offer));
}

}  // namespace platform::win32
