#include "platform/win32/ui/dialogs.h"

#include "platform/win32/base/windows_api.h"

#include <commdlg.h>

#include <algorithm>
#include <string>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/tab_stops.h"

namespace platform::win32 {
namespace {

constexpr std::uint32_t kButtonBits = 0x0f;
constexpr const char16_t* kProgramName = u"Funkhausplayer";

/// The answer that starts nothing, for a box that was dismissed without one because the program ends.
MessageBoxAnswer Dismissed(std::uint32_t style) {
  switch (style & kButtonBits) {
    case kMbOkCancel:
    case kMbYesNoCancel:
      return MessageBoxAnswer::kCancel;
    case kMbYesNo:
      return MessageBoxAnswer::kNo;
    default:
      return MessageBoxAnswer::kOk;
  }
}

/// All loops are being left (Win32MessageLoop::LeaveAll), so nobody has answered.
bool Leaves() {
  MSG message{};
  return ::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) != 0;
}

/// Puts the process's working folder back: a dialog for opening may change it whatever its flags say.
class KeptWorkingFolder {
 public:
  KeptWorkingFolder() : folder_(::GetCurrentDirectoryW(0, nullptr), L'\0') {
    ::GetCurrentDirectoryW(static_cast<DWORD>(folder_.size()), folder_.data());
  }
  ~KeptWorkingFolder() { ::SetCurrentDirectoryW(folder_.c_str()); }
  KeptWorkingFolder(const KeptWorkingFolder&) = delete;
  KeptWorkingFolder& operator=(const KeptWorkingFolder&) = delete;

 private:
  std::wstring folder_;
};

const wchar_t* WideOrNull(const Text& text) {
  return text.empty() || text[0] == u'\0' ? nullptr : Wide(text);
}

}  // namespace

HWND Win32Dialogs::Owner() const {
  if (main_window_ == nullptr || ::IsWindowVisible(main_window_) == 0) return nullptr;
  return ::GetLastActivePopup(main_window_);
}

MessageBoxAnswer Win32Dialogs::MessageBoxW(const Text& text, const Text& caption, std::uint32_t style) {
  const Text title = caption.empty() ? Text(kProgramName) : caption;
  loop_.Rest();
  KeepFocus();
  const int answer = ::MessageBoxW(Owner(), Wide(text), Wide(title), style);
  if (Leaves()) return Dismissed(style);
  switch (answer) {
    case IDOK:
    case IDCANCEL:
    case IDYES:
    case IDNO:
      return MessageBoxAnswer{answer};
    default:
      return Dismissed(style);
  }
}

bool Win32Dialogs::GetOpenFileNameW(OpenFileName& dialog) { return Choose(dialog, Direction::kOpen); }

bool Win32Dialogs::GetSaveFileNameW(OpenFileName& dialog) { return Choose(dialog, Direction::kSave); }

bool Win32Dialogs::Choose(OpenFileName& dialog, Direction direction) {
  // A result of no room at all could not even be ended.
  if (dialog.file.empty()) return false;
  Text file = dialog.file;
  file.back() = u'\0';
  Text filter = dialog.filter;
  filter += Text(2, u'\0');
  OPENFILENAMEW wanted{};
  wanted.lStructSize = sizeof wanted;
  wanted.hwndOwner = Owner();
  wanted.lpstrFilter = WideData(filter);
  wanted.lpstrFile = WideBuffer(file.data());
  wanted.nMaxFile = static_cast<DWORD>(file.size());
  wanted.lpstrInitialDir = WideOrNull(dialog.initial_folder);
  wanted.lpstrTitle = WideOrNull(dialog.title);
  wanted.lpstrDefExt = WideOrNull(dialog.default_extension);
  // The working folder stays what it is, so that no folder is kept from being removed. The flag is documented
  // to work for saving only.
  const KeptWorkingFolder working_folder;
  wanted.Flags = dialog.flags | OFN_NOCHANGEDIR;
  loop_.Rest();
  KeepFocus();
  const BOOL chosen =
      direction == Direction::kSave ? ::GetSaveFileNameW(&wanted) : ::GetOpenFileNameW(&wanted);
  if (chosen == 0 || Leaves()) return false;
  dialog.file = file;
  return true;
}

}  // namespace platform::win32
