#include "programs/windows/arguments.h"

#include "platform/win32/base/windows_api.h"

#include <shellapi.h>

#include <algorithm>

#include "platform/win32/base/wide.h"
#include "platform/win32/text/text_conversion.h"

namespace {

platform::Text FromUtf8(const std::string& text) {
  return platform::win32::Win32TextConversion().MultiByteToWideChar(platform::CodePage::kUtf8, text);
}

}  // namespace

std::vector<std::string> Arguments() {
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  platform::win32::Win32TextConversion conversion;
  for (int word = 1; words != nullptr && word < count; ++word) {
    const platform::Text text = platform::win32::FromWide(words[word]);
    arguments.push_back(conversion.WideCharToMultiByte(platform::CodePage::kUtf8, text));
  }
  ::LocalFree(words);
  return arguments;
}

std::string CommandTail() {
  const platform::Text line = platform::win32::FromWide(::GetCommandLineW());
  return platform::win32::Win32TextConversion().WideCharToMultiByte(platform::CodePage::kUtf8, TailOf(line));
}

platform::TextView TailOf(platform::TextView command_line) {
  constexpr platform::TextView kBlanks = u" \t";
  bool is_quoted = false;
  std::size_t at = 0;
  while (at < command_line.size() && (is_quoted || kBlanks.find(command_line[at]) == kBlanks.npos)) {
    if (command_line[at++] == u'"') is_quoted = !is_quoted;
  }
  return command_line.substr(std::min(command_line.find_first_not_of(kBlanks, at), command_line.size()));
}

platform::Text FullArgument(const std::string& argument) {
  platform::Text text = FromUtf8(argument);
  if (text.empty() || text.find(u"://") != platform::Text::npos) return text;
  const DWORD needed = ::GetFullPathNameW(platform::win32::Wide(text), 0, nullptr, nullptr);
  platform::Text full(needed, u'\0');
  const DWORD length = ::GetFullPathNameW(platform::win32::Wide(text), needed,
                                          platform::win32::WideBuffer(full.data()), nullptr);
  if (length == 0 || length >= needed) return text;
  full.resize(length);
  return full;
}

void ShowText(const platform::Text& title, const std::string& text) {
  ::MessageBoxW(nullptr, platform::win32::Wide(FromUtf8(text)), platform::win32::Wide(title), MB_OK);
}
