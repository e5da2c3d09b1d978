#include "tests/support/plain_disk.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <sstream>
#include <system_error>

namespace test_support {
namespace {

namespace fs = std::filesystem;
using platform::CodePage;
using platform::FileStamp;
using platform::FileState;
using platform::FindHandle;
using platform::FoundFile;
using platform::ProfileReading;
using platform::Text;

fs::path NamedBy(const std::string& native) { return std::u8string(native.begin(), native.end()); }

std::optional<std::string> Contents(const fs::path& path, std::size_t limit) {
  std::error_code error;
  if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > limit) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return file ? std::optional(bytes.str()) : std::nullopt;
}

bool ReplaceContents(const fs::path& path, std::string_view bytes) {
  std::error_code error;
  if (fs::exists(path, error) && !fs::is_regular_file(path, error)) return false;
  fs::path beside = path;
  beside += ".new";
  {
    std::ofstream file(beside, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) return false;
  }
  fs::rename(beside, path, error);
  return !error;
}

/// A file is fresh for a tenth of a second, in which its time stamp may not advance. Where the library knows
/// whole seconds only, it is fresh for longer than one.
FileState StateOf(const fs::path& path) {
  using std::chrono::milliseconds;
  std::error_code error;
  const auto written = fs::last_write_time(path, error);
  const auto now = fs::file_time_type::clock::now();
  const bool is_whole = written.time_since_epoch() % std::chrono::seconds(1) == milliseconds(0);
  return {FileStamp{{static_cast<std::uint64_t>(written.time_since_epoch().count()),
                     static_cast<std::uint64_t>(fs::file_size(path, error))}},
          now - written < milliseconds(is_whole ? 1100 : 100)};
}

}  // namespace

Text PlainNativePaths::FromNative(const std::string& native) {
  Text path = conversion_.MultiByteToWideChar(CodePage::kUtf8, native);
  std::replace(path.begin(), path.end(), u'/', u'\\');
  return path;
}

std::string PlainNativePaths::ToNative(const Text& path) {
  std::string native = conversion_.WideCharToMultiByte(CodePage::kUtf8, path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

fs::path PlainFiles::PathOf(const Text& path) { return NamedBy(paths_.ToNative(path)); }

/// A path that ends with a separator names a folder, which not every system's library checks.
bool PlainFiles::PathFileExistsW(const Text& path) {
  std::error_code error;
  const fs::path native = PathOf(path);
  return native.has_filename() ? fs::exists(native, error) : fs::is_directory(native, error);
}

bool PlainFiles::CreateDirectoryW(const Text& path) {
  std::error_code error;
  return fs::create_directory(PathOf(path), error);
}

FindHandle PlainFiles::FindFirstFileW(const Text& pattern, FoundFile& found) {
  std::error_code error;
  std::vector<FoundFile> entries;
  for (const auto& entry : fs::directory_iterator(PathOf(pattern).parent_path(), error)) {
    entries.push_back(
        {entry.path().filename().u16string(), entry.is_directory(error), entry.is_symlink(error)});
  }
  if (entries.empty()) return FindHandle::kNone;
  std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.name > b.name; });
  const FindHandle search{++last_search_};
  searches_[search] = std::move(entries);
  FindNextFileW(search, found);
  return search;
}

bool PlainFiles::FindNextFileW(FindHandle search, FoundFile& found) {
  const auto known = searches_.find(search);
  if (known == searches_.end() || known->second.empty()) return false;
  found = std::move(known->second.back());
  known->second.pop_back();
  return true;
}

std::optional<std::string> PlainFiles::ReadWholeFile(const Text& path, std::size_t limit) {
  return Contents(PathOf(path), limit);
}

bool PlainFiles::WriteWholeFile(const Text& path, const std::string& bytes) {
  return !is_full && !path.empty() && ReplaceContents(PathOf(path), bytes);
}

bool PlainFiles::DeleteFileW(const Text& path) {
  std::error_code error;
  return fs::is_regular_file(PathOf(path), error) && fs::remove(PathOf(path), error);
}

bool PlainFiles::MoveFileExW(const Text& path, const Text& new_path) {
  std::error_code error;
  fs::rename(PathOf(path), PathOf(new_path), error);
  return !error;
}

std::pair<ProfileReading, FileStamp> PlainProfileFiles::Stamp(const std::string& name) {
  std::error_code error;
  if (!fs::exists(NamedBy(name), error)) return {ProfileReading::kMissing, {}};
  return {ProfileReading::kRead, StateOf(NamedBy(name)).stamp};
}

platform::ProfileBytes PlainProfileFiles::Read(const std::string& name, std::size_t limit) {
  ++reads;
  const fs::path path = NamedBy(name);
  std::error_code error;
  if (!fs::exists(path, error)) return {ProfileReading::kMissing, {}, {}};
  const FileState state = StateOf(path);
  auto bytes = Contents(path, limit);
  if (!bytes) return {};
  return {ProfileReading::kRead, std::move(*bytes), state};
}

std::optional<FileState> PlainProfileFiles::Replace(const std::string& name, std::string_view bytes) {
  ++replacements;
  if (open_locks != 1) ++unlocked_replacements;
  if (is_full || !ReplaceContents(NamedBy(name), bytes)) return std::nullopt;
  return StateOf(NamedBy(name));
}

platform::ProfileLocking PlainProfileFiles::Lock(const std::string& name) {
  ++open_locks;
  std::error_code error;
  const bool has_folder = fs::is_directory(NamedBy(name).parent_path(), error);
  using Result = platform::ProfileLocking::Result;
  return {has_folder ? Result::kHeld : Result::kNoFolder, platform::ProfileLock{1}};
}

}  // namespace test_support
