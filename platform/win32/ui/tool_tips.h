#pragma once
// The tooltips of one top-level window. Not their texts.

#include <map>

#include "platform/win32/base/handles.h"
#include "ports/text.h"

namespace platform::win32 {

class ToolTips {
 public:
  explicit ToolTips(HWND window);
  ~ToolTips();
  ToolTips(const ToolTips&) = delete;
  ToolTips& operator=(const ToolTips&) = delete;

  /// An empty text: none.
  void Show(HWND control, const Text& text);
  /// What a control shows now.
  [[nodiscard]] Text Of(HWND control) const;

 private:
  HWND tips_ = nullptr;
  std::map<HWND, Text> texts_;
};

}  // namespace platform::win32
