#include "platform/win32/ui/shown_text.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <array>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

constexpr std::size_t kLongestPanelText = 8192;

bool BreaksLine(char16_t unit) {
  return unit < u' ' || (unit >= u'\x7f' && unit <= u'\x9f') || unit == u'\u2028' || unit == u'\u2029';
}

bool SystemIsGerman() { return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_GERMAN; }

}  // namespace

Text OnOneLine(TextView text, std::size_t longest) {
  // No half of a character.
  if (longest < text.size() && longest > 0 && (text[longest] & 0xfc00) == 0xdc00) --longest;
  Text line(text.substr(0, longest));
  std::replace_if(line.begin(), line.end(), BreaksLine, u' ');
  return line;
}

Text WithoutMnemonics(TextView caption) {
  Text text;
  for (const char16_t unit : caption) {
    text += unit;
    if (unit == u'&') text += unit;
  }
  return text;
}

Text Lines(TextView text) {
  Text lines;
  for (std::size_t at = 0; at < std::min(text.size(), kLongestPanelText); ++at) {
    if (text[at] == u'\n' && at > 0 && text[at - 1] == u'\r') continue;
    lines += text[at] == u'\r' ? u'\n' : text[at] == u'\0' ? u' ' : text[at];
  }
  while (!lines.empty() && lines.back() == u'\n') lines.pop_back();
  return lines;
}

Text KeyName(const controls::Key& key) {
  if (!key) return {};
  if (key == controls::kEnterKey) return SystemIsGerman() ? u"Eingabe" : u"Enter";
  if (key == controls::kEscapeKey) return u"Esc";
  if (key == controls::kHelpKey) return u"F1";
  Text name = key.with_control ? (SystemIsGerman() ? u"Strg+" : u"Ctrl+") : u"";
  return name + key.character;
}

Text DeleteKeyName() { return SystemIsGerman() ? u"Entf" : u"Del"; }

Text TextOf(HWND window) {
  const int length = ::GetWindowTextLengthW(window);
  Text text(static_cast<std::size_t>(length) + 1, u'\0');
  const int copied = ::GetWindowTextW(window, WideBuffer(text.data()), length + 1);
  text.resize(static_cast<std::size_t>(copied));
  return text;
}

bool IsOfClass(HWND window, const wchar_t* name) {
  std::array<wchar_t, 64> buffer{};
  const int length = ::GetClassNameW(window, buffer.data(), static_cast<int>(buffer.size()));
  return length > 0 && ::lstrcmpiW(buffer.data(), name) == 0;
}

}  // namespace platform::win32
