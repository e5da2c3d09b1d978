#include "platform/win32/ui/tool_tips.h"

#include "platform/win32/base/windows_api.h"

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/text_drawing.h"

namespace platform::win32 {
namespace {

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

ToolTips::ToolTips(HWND window, const Scale& scale)
    : scale_(scale),
      tips_(::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                              WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr, ::GetModuleHandleW(nullptr),
                              nullptr)),
      theme_(tips_, ThemeWhenDark::Kind::kNone) {
  FollowScale();
  FollowColors();
}

ToolTips::~ToolTips() { ::DestroyWindow(tips_); }

void ToolTips::FollowScale() {
  ::SendMessageW(tips_, WM_SETFONT, reinterpret_cast<WPARAM>(scale_.Get(Scale::Font::kPlain)), TRUE);
  // A width lets long texts wrap.
  ::SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, scale_.Scaled(kWidestLine));
  // The words of a text are broken for the font.
  for (const auto& [control, text] : texts_) Give(control, text, TTM_UPDATETIPTEXTW);
}

void ToolTips::FollowColors() {
  // With its theme the system's tooltip has the theme's colours whatever it is given.
  theme_.Follow();
  ::SendMessageW(tips_, TTM_SETTIPBKCOLOR, ShownColor(COLOR_INFOBK), 0);
  ::SendMessageW(tips_, TTM_SETTIPTEXTCOLOR, ShownColor(COLOR_INFOTEXT), 0);
}

/// The system wraps texts at their blanks only, and puts what has none on one line, wider than the screen.
Text ToolTips::Wrapped(const Text& text) const {
  const WindowContext context(tips_);
  const SelectedFont font(context.Get(), scale_.Get(Scale::Font::kPlain));
  return WithLongWordsBroken(context.Get(), text, scale_.Scaled(kWidestLine));
}

void ToolTips::Show(HWND control, const Text& text) {
  const auto known = texts_.find(control);
  if (known == texts_.end() ? text.empty() : known->second == text) return;
  if (text.empty()) {
    TTTOOLINFOW tool = ToolFor(control);
    ::SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    texts_.erase(known);
    return;
  }
  const UINT message = known == texts_.end() ? TTM_ADDTOOLW : TTM_UPDATETIPTEXTW;
  texts_[control] = text;
  Give(control, text, message);
  // What is open was opened for the text before.
  ::SendMessageW(tips_, TTM_POP, 0, 0);
}

void ToolTips::Give(HWND control, const Text& text, unsigned int message) const {
  TTTOOLINFOW tool = ToolFor(control);
  const Text wrapped = Wrapped(text);
  tool.lpszText = const_cast<wchar_t*>(Wide(wrapped));
  ::SendMessageW(tips_, message, 0, reinterpret_cast<LPARAM>(&tool));
}

Text ToolTips::Of(HWND control) const {
  const auto known = texts_.find(control);
  return known == texts_.end() ? Text() : known->second;
}

}  // namespace platform::win32
