#include "platform/posix/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

#include "platform/posix/native_names.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/whole_file.h"

namespace platform::posix {
namespace {

constexpr mode_t kNewFolder = 0777;

/// The folder of a pattern "folder\*.*", with its separator; nothing for any other pattern.
std::optional<Text> FolderOfPattern(const Text& pattern) {
  const auto separator = pattern.find_last_of(u"\\/");
  const auto name_begin = separator == Text::npos ? 0 : separator + 1;
  const TextView name = TextView(pattern).substr(name_begin);
  if (name != u"*.*" && name != u"*") return std::nullopt;
  return name_begin == 0 ? Text(u".") : pattern.substr(0, name_begin);
}

std::string WithSeparator(const std::string& folder) { return folder + (folder.ends_with('/') ? "" : "/"); }

void ReadKind(const std::string& path, FoundFile& found) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return;
  found.is_reparse_point = S_ISLNK(status.st_mode);
  if (found.is_reparse_point && ::stat(path.c_str(), &status) != 0) return;
  found.is_directory = S_ISDIR(status.st_mode);
}

}  // namespace

PosixFiles::PosixFiles(NativePaths& paths) : paths_(paths) {}

bool PosixFiles::PathFileExistsW(const Text& path) {
  const std::string native = paths_.ToNativeForReading(path);
  struct stat status {};
  return IsUsablePath(native) && ::stat(native.c_str(), &status) == 0;
}

bool PosixFiles::CreateDirectoryW(const Text& path) {
  const std::string native = paths_.ToNative(path);
  return IsUsablePath(native) && ::mkdir(native.c_str(), kNewFolder) == 0;
}

std::vector<FoundFile> PosixFiles::List(const Text& folder) {
  const std::vector<std::string> places = paths_.ToNativeForListing(folder);
  std::vector<FoundFile> entries;
  for (const std::string& place : places) {
    if (!IsUsablePath(place)) continue;
    for (const std::string& name : places.size() == 1 ? NamesIn(place) : NamesToRead(folder, place)) {
      FoundFile found{paths_.FromNative(name)};
      ReadKind(WithSeparator(place) + name, found);
      entries.push_back(std::move(found));
    }
  }
  std::sort(entries.begin(), entries.end(),
            [](const FoundFile& left, const FoundFile& right) { return left.name < right.name; });
  return entries;
}

/// The names in one of several places of a folder by which reading finds what lies there.
std::vector<std::string> PosixFiles::NamesToRead(const Text& folder, const std::string& native) {
  std::vector<std::string> names = NamesIn(native);
  std::erase_if(names, [&](const std::string& name) {
    return paths_.ToNativeForReading(folder + paths_.FromNative(name)) != WithSeparator(native) + name;
  });
  return names;
}

FindHandle PosixFiles::FindFirstFileW(const Text& pattern, FoundFile& found) {
  const auto folder = FolderOfPattern(pattern);
  if (!folder) return FindHandle::kNone;
  Search search{List(*folder)};
  if (search.entries.empty()) return FindHandle::kNone;
  found = search.entries[search.next++];
  const FindHandle handle{++last_search_};
  searches_.emplace(handle, std::move(search));
  return handle;
}

bool PosixFiles::FindNextFileW(FindHandle search, FoundFile& found) {
  const auto open = searches_.find(search);
  if (open == searches_.end() || open->second.next == open->second.entries.size()) return false;
  found = open->second.entries[open->second.next++];
  return true;
}

void PosixFiles::FindClose(FindHandle search) { searches_.erase(search); }

std::optional<std::string> PosixFiles::ReadWholeFile(const Text& path, std::size_t limit) {
  const std::string native = paths_.ToNativeForReading(path);
  if (!IsUsablePath(native)) return std::nullopt;
  try {
    ReadResult result = ReadRegularFile(native, limit);
    if (!result.file) return std::nullopt;
    return std::move(result.file->bytes);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

bool PosixFiles::WriteWholeFile(const Text& path, const std::string& bytes) {
  const std::string native = paths_.ToNative(path);
  try {
    return IsUsablePath(native) && ReplaceFile(native, bytes).has_value();
  } catch (const std::exception&) {
    return false;
  }
}

bool PosixFiles::DeleteFileW(const Text& path) {
  const std::string native = paths_.ToNative(path);
  return IsUsablePath(native) && ::unlink(native.c_str()) == 0;
}

bool PosixFiles::MoveFileExW(const Text& path, const Text& new_path) {
  const std::string native = paths_.ToNative(path);
  const std::string new_native = paths_.ToNative(new_path);
  return IsUsablePath(native) && IsUsablePath(new_native) &&
         ::rename(native.c_str(), new_native.c_str()) == 0;
}

}  // namespace platform::posix
