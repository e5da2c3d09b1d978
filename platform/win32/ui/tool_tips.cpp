#include "platform/win32/ui/tool_tips.h"

#include "platform/win32/base/windows_api.h"

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

constexpr int kWidestLine = 500;

/// The size that all versions of the common controls accept.
TTTOOLINFOW ToolFor(HWND control) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = ::GetParent(control);
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  return tool;
}

}  // namespace

ToolTips::ToolTips(HWND window)
    : tips_(::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                              WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr, ::GetModuleHandleW(nullptr),
                              nullptr)) {
  // A width lets long texts wrap.
  ::SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, kWidestLine);
}

ToolTips::~ToolTips() { ::DestroyWindow(tips_); }

void ToolTips::Show(HWND control, const Text& text) {
  const auto known = texts_.find(control);
  if (known == texts_.end() ? text.empty() : known->second == text) return;
  TTTOOLINFOW tool = ToolFor(control);
  tool.lpszText = const_cast<wchar_t*>(Wide(text));
  if (text.empty()) {
    ::SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    texts_.erase(known);
    return;
  }
  const UINT message = known == texts_.end() ? TTM_ADDTOOLW : TTM_UPDATETIPTEXTW;
  texts_[control] = text;
  ::SendMessageW(tips_, message, 0, reinterpret_cast<LPARAM>(&tool));
  // What is open was opened for the text before.
  ::SendMessageW(tips_, TTM_POP, 0, 0);
}

Text ToolTips::Of(HWND control) const {
  const auto known = texts_.find(control);
  return known == texts_.end() ? Text() : known->second;
}

}  // namespace platform::win32
