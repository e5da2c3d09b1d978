#include "platform/win32/system/profile_files.h"

#include <exception>
#include <optional>

#include "platform/win32/system/native_paths.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/whole_file.h"

namespace platform::win32 {
namespace {

std::optional<std::wstring> PathOf(const std::string& name) {
  return SystemPath(Win32NativePaths().FromNative(name));
}

}  // namespace

std::pair<ProfileReading, FileStamp> Win32ProfileFiles::Stamp(const std::string& name) {
  try {
    const auto path = PathOf(name);
    if (!path) return {ProfileReading::kUnreadable, {}};
    const auto [reading, state] = StateOf(*path);
    return {reading, state.stamp};
  } catch (const std::exception&) {
    return {ProfileReading::kUnreadable, {}};
  }
}

ProfileBytes Win32ProfileFiles::Read(const std::string& name, std::size_t limit) {
  try {
    const auto path = PathOf(name);
    return path ? ReadRegularFile(*path, limit) : ProfileBytes{};
  } catch (const std::exception&) {
    return {};
  }
}

std::optional<FileState> Win32ProfileFiles::Replace(const std::string& name, std::string_view bytes) {
  try {
    const auto path = PathOf(name);
    return path ? ReplaceFile(*path, bytes) : std::nullopt;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

ProfileLocking Win32ProfileFiles::Lock(const std::string& name) {
  try {
    return TryLock(name);
  } catch (const std::exception&) {
    return {};
  }
}

ProfileLocking Win32ProfileFiles::TryLock(const std::string& name) {
  const auto path = PathOf(name);
  if (!path) return {};
  return locks_.Keep(FolderLock(FolderOf(ResolvedPath(*path).value_or(*path))));
}

void Win32ProfileFiles::Unlock(ProfileLock lock) { locks_.Release(lock); }

}  // namespace platform::win32
