#pragma once
// The tooltips of one top-level window. Not their texts.

#include <map>

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/dark_controls.h"
#include "platform/win32/ui/scale.h"
#include "ports/text.h"

namespace platform::win32 {

/// A text that is too wide is wrapped, an address at its parts.
class ToolTips {
 public:
  /// The scale outlives it.
  ToolTips(HWND window, const Scale& scale);
  ~ToolTips();
  ToolTips(const ToolTips&) = delete;
  ToolTips& operator=(const ToolTips&) = delete;

  /// An empty text: none.
  void Show(HWND control, const Text& text);
  /// To be called when the scale has changed.
  void FollowScale();
  /// To be called when the colours may have changed.
  void FollowColors();
  /// What a control shows now.
  [[nodiscard]] Text Of(HWND control) const;

 private:
  /// At 100 %.
  static constexpr int kWidestLine = 500;
  /// Adds the control's text, or replaces it, by the system's message for that.
  void Give(HWND control, const Text& text, unsigned int message) const;
  [[nodiscard]] Text Wrapped(const Text& text) const;

  const Scale& scale_;
  HWND tips_ = nullptr;
  ThemeWhenDark theme_;
  std::map<HWND, Text> texts_;
};

}  // namespace platform::win32
