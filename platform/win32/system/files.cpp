#include "platform/win32/system/files.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/whole_file.h"

namespace platform::win32 {
namespace {

/// Whether a pattern asks for every name of a folder.
bool AsksForAll(TextView pattern) {
  const auto separator = pattern.find_last_of(u"\\/");
  const TextView name = pattern.substr(separator == TextView::npos ? 0 : separator + 1);
  return name == u"*.*" || name == u"*";
}

FoundFile Found(const WIN32_FIND_DATAW& data) {
  return {FromWide(data.cFileName), (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
          (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0};
}

std::vector<FoundFile> List(const std::wstring& pattern) {
  std::vector<FoundFile> entries;
  WIN32_FIND_DATAW data{};
  HANDLE const search = ::FindFirstFileW(pattern.c_str(), &data);
  if (search == INVALID_HANDLE_VALUE) return entries;
  do {
    const std::wstring_view name = data.cFileName;
    if (name != L"." && name != L"..") entries.push_back(Found(data));
  } while (::FindNextFileW(search, &data) != 0);
  ::FindClose(search);
  std::sort(entries.begin(), entries.end(),
            [](const FoundFile& left, const FoundFile& right) { return left.name < right.name; });
  return entries;
}

}  // namespace

bool Win32Files::PathFileExistsW(const Text& path) {
  // The system's own operation of that name takes neither a long path nor a share by itself
  // ("\\server\share").
  const auto name = SystemPath(path);
  return name && ::GetFileAttributesW(name->c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool Win32Files::CreateDirectoryW(const Text& path) {
  const auto name = SystemPath(path);
  return name && ::CreateDirectoryW(name->c_str(), nullptr) != 0;
}

FindHandle Win32Files::FindFirstFileW(const Text& pattern, FoundFile& found) {
  const auto name = SystemPath(pattern);
  if (!name || !AsksForAll(pattern)) return FindHandle::kNone;
  Search search{List(*name)};
  if (search.entries.empty()) return FindHandle::kNone;
  found = search.entries[search.next++];
  const FindHandle handle{++last_search_};
  searches_.emplace(handle, std::move(search));
  return handle;
}

bool Win32Files::FindNextFileW(FindHandle search, FoundFile& found) {
  const auto open = searches_.find(search);
  if (open == searches_.end() || open->second.next == open->second.entries.size()) return false;
  found = open->second.entries[open->second.next++];
  return true;
}

void Win32Files::FindClose(FindHandle search) { searches_.erase(search); }

std::optional<std::string> Win32Files::ReadWholeFile(const Text& path, std::size_t limit) {
  try {
    const auto name = SystemPath(path);
    if (!name) return std::nullopt;
    ProfileBytes read = ReadRegularFile(*name, limit);
    if (read.reading != ProfileReading::kRead) return std::nullopt;
    return std::move(read.bytes);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

bool Win32Files::WriteWholeFile(const Text& path, const std::string& bytes) {
  try {
    const auto name = SystemPath(path);
    return name && ReplaceFile(*name, bytes).has_value();
  } catch (const std::exception&) {
    return false;
  }
}

bool Win32Files::DeleteFileW(const Text& path) {
  const auto name = SystemPath(path);
  return name && ::DeleteFileW(name->c_str()) != 0;
}

bool Win32Files::MoveFileExW(const Text& path, const Text& new_path) {
  const auto name = SystemPath(path);
  const auto new_name = SystemPath(new_path);
  return name && new_name &&
         ::MoveFileExW(name->c_str(), new_name->c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

}  // namespace platform::win32
