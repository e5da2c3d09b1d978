#include "platform/win32/system/system_path.h"

#include "platform/win32/base/windows_api.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "platform/win32/system/owned_handle.h"

namespace platform::win32 {
namespace {

/// A folder must leave room for a short file name.
constexpr std::size_t kLongest = MAX_PATH - 12;
constexpr const wchar_t* kPrefix = L"\\\\?\\";
constexpr const wchar_t* kNetworkPrefix = L"\\\\?\\UNC\\";

/// Calls an operation that says how much room it needs until it has it; empty when it fails.
template <typename Operation>
std::wstring Grown(const Operation& operation) {
  std::wstring text(MAX_PATH, L'\0');
  while (true) {
    const DWORD size = operation(text.data(), static_cast<DWORD>(text.size()));
    if (size <= text.size()) {
      text.resize(size);
      return text;
    }
    text.resize(size);
  }
}

OwnedHandle OpenForLooking(const std::wstring& path) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return OwnedHandle(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                   FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

/// Of an open file or folder, with the prefix; empty when the system does not know it.
std::wstring NameOf(HANDLE entry) {
  return Grown([entry](wchar_t* buffer, DWORD size) {
    return ::GetFinalPathNameByHandleW(entry, buffer, size, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
  });
}

}  // namespace

std::optional<std::wstring> SystemPath(TextView path) {
  if (path.empty() || path.find(u'\0') != TextView::npos) return std::nullopt;
  std::wstring wide(path.begin(), path.end());
  if (wide.size() < kLongest || wide.starts_with(kPrefix)) return wide;
  const std::wstring full = Grown([&wide](wchar_t* buffer, DWORD size) {
    return ::GetFullPathNameW(wide.c_str(), size, buffer, nullptr);
  });
  if (full.empty()) return std::nullopt;
  return full.starts_with(L"\\\\") ? kNetworkPrefix + full.substr(2) : kPrefix + full;
}

std::wstring WithoutPrefix(const std::wstring& path) {
  const std::wstring_view network = kNetworkPrefix;
  const std::wstring_view local = kPrefix;
  if (path.size() >= kLongest) return path;
  if (path.starts_with(network)) return L"\\\\" + path.substr(network.size());
  return path.starts_with(local) ? path.substr(local.size()) : path;
}

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(L"\\/") + 1); }

std::wstring NumberOf(std::wstring name) {
  if (!name.empty()) ::CharLowerBuffW(name.data(), static_cast<DWORD>(name.size()));
  std::uint64_t number = 0xcbf29ce484222325U;
  for (const wchar_t unit : name) {
    number = (number ^ (unit & 0xFFU)) * 0x100000001b3U;
    number = (number ^ (static_cast<unsigned>(unit) >> 8U)) * 0x100000001b3U;
  }
  std::array<char, 17> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
  return {digits.begin(), digits.end() - 1};
}

std::optional<std::wstring> ResolvedPath(const std::wstring& path) {
  const OwnedHandle entry = OpenForLooking(path);
  if (!entry.IsOpen()) return std::nullopt;
  const std::wstring resolved = NameOf(entry.Get());
  return resolved.empty() ? path : WithoutPrefix(resolved);
}

}  // namespace platform::win32
