#pragma once
// The program's texts as windows show them, and the texts of windows. Not their translation.

#include <cstddef>

#include "controls/key.h"
#include "platform/win32/base/handles.h"
#include "ports/text.h"

namespace platform::win32 {

/// On one line: control characters become blanks; no longer than a row or a title needs.
[[nodiscard]] Text OnOneLine(TextView text, std::size_t longest = 1024);
/// For captions in which "&" would mark a letter.
[[nodiscard]] Text WithoutMnemonics(TextView caption);
/// With the line ends that the system draws, and no longer than a panel needs.
[[nodiscard]] Text Lines(TextView text);
/// "Strg+S" or "Ctrl+S", by the language of the user's system; empty for no key.
[[nodiscard]] Text KeyName(const controls::Key& key);
[[nodiscard]] Text DeleteKeyName();

[[nodiscard]] Text TextOf(HWND window);
/// The name of the class of a window is this one, in any letter case.
[[nodiscard]] bool IsOfClass(HWND window, const wchar_t* name);

}  // namespace platform::win32
