#include "platform/win32/system/environment.h"

#include "platform/win32/base/windows_api.h"

#include <shlobj.h>

#include <string>

#include "platform/win32/base/wide.h"
#include "platform/win32/system/system_path.h"

namespace platform::win32 {
namespace {

/// Empty when the system has no such folder.
Text KnownFolder(const GUID& id) {
  wchar_t* path = nullptr;
  const HRESULT result = ::SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &path);
  const Text folder = SUCCEEDED(result) ? FromWide(path) : Text();
  ::CoTaskMemFree(path);
  return folder;
}

Text Variable(const Text& name) {
  std::wstring value;
  DWORD size = ::GetEnvironmentVariableW(Wide(name), nullptr, 0);
  while (size > value.size()) {
    value.resize(size);
    size = ::GetEnvironmentVariableW(Wide(name), value.data(), static_cast<DWORD>(value.size()));
  }
  value.resize(size);
  return FromWide(value);
}

/// Without the separator at its end, unless it is a root.
Text WithoutSeparator(Text folder) {
  if (folder.size() > 3 && folder.ends_with(u'\\')) folder.pop_back();
  return folder;
}

}  // namespace

Text Win32Environment::GetEnvironmentVariableW(const Text& name) {
  if (name.empty() || name.find(u'\0') != Text::npos) return {};
  Text value = Variable(name);
  if (value.empty() && name == u"APPDATA") value = KnownFolder(FOLDERID_RoamingAppData);
  return value;
}

Text Win32Environment::ProgramFolder() {
  constexpr DWORD kLongestPath = 32'768;
  std::wstring path(kLongestPath, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), kLongestPath));
  return WithoutSeparator(FromWide(FolderOf(ResolvedPath(path).value_or(path))));
}

Text Win32Environment::MusicFolder() {
  const Text folder = KnownFolder(FOLDERID_Music);
  return folder.empty() ? ProgramFolder() : folder;
}

Text Win32Environment::StateFile(const Text& path, const Text& extension) {
  const Text folder = KnownFolder(FOLDERID_LocalAppData) + u"\\Funkhausplayer";
  ::CreateDirectoryW(Wide(folder), nullptr);
  const std::wstring wide(path.begin(), path.end());
  const std::wstring in_folder = FolderOf(wide);
  const std::wstring name = wide.substr(in_folder.size());
  const auto resolved = in_folder.empty() ? std::nullopt : ResolvedPath(in_folder);
  const std::wstring number = NumberOf(resolved ? *resolved + L"\\" + name : wide);
  return folder + u"\\" + FromWide(number) + extension;
}

std::uint32_t Win32Environment::GetCurrentProcessId() { return ::GetCurrentProcessId(); }

}  // namespace platform::win32
