#include "platform/win32/system/shell.h"

#include "platform/win32/base/windows_api.h"

#include <shellapi.h>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

/// Null for an empty text, which means the same as no text at all to the system.
const wchar_t* WideOrNull(const Text& text) { return text.empty() ? nullptr : Wide(text); }

}  // namespace

bool CallShell(const ShellCall& call) {
  // Public reference: results up to 32 are errors, for programs written before there were others.
  constexpr INT_PTR kLastError = 32;
  return reinterpret_cast<INT_PTR>(::ShellExecuteW(call.owner, call.verb, call.file, call.parameters,
                                                   call.folder, call.show)) > kLastError;
}

bool Win32Shell::ShellExecuteW(std::uint32_t /*owner*/, const Text& verb, const Text& file,
                               const Text& parameters, const Text& folder, std::int32_t show) {
  if (file.empty()) return false;
  return operation_(
      {::GetActiveWindow(), WideOrNull(verb), Wide(file), WideOrNull(parameters), WideOrNull(folder), show});
}

}  // namespace platform::win32
