#include "platform/win32/system/whole_file.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/win32/system/file_rights.h"
#include "platform/win32/system/owned_handle.h"
#include "platform/win32/system/system_path.h"

namespace platform::win32 {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32U | low; }

std::uint64_t Now() {
  FILETIME now{};
  ::GetSystemTimeAsFileTime(&now);
  return Joined(now.dwHighDateTime, now.dwLowDateTime);
}

std::uint64_t Joined(FILETIME time) { return Joined(time.dwHighDateTime, time.dwLowDateTime); }

/// Time stamps advance in steps of some milliseconds, on simple disks in steps of two seconds, so that two
/// changes within one step look alike. A stamp from another machine's clock that lies further ahead says
/// nothing about this and counts as old.
bool IsFresh(std::uint64_t written) {
  constexpr std::uint64_t kStep = 1'000'000;
  constexpr std::uint64_t kLongStep = 20'000'000;
  const std::uint64_t step = kStep + (written % kLongStep == 0 ? kLongStep : 0);
  const std::uint64_t now = Now();
  return written + step > now && written < now + step;
}

/// Of what the system gives for a name as well as for an open file: asking by name is far quicker.
template <typename Information>
FileState StateIn(const Information& known) {
  const std::uint64_t written = Joined(known.ftLastWriteTime);
  const FileStamp stamp{
      {Joined(known.nFileSizeHigh, known.nFileSizeLow), written, Joined(known.ftCreationTime)}};
  return {stamp, IsFresh(written)};
}

FileState StateOf(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION known{};
  ::GetFileInformationByHandle(file, &known);
  return StateIn(known);
}

ProfileReading FailureOf(DWORD error) {
  const bool is_missing =
      error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME;
  return is_missing ? ProfileReading::kMissing : ProfileReading::kUnreadable;
}

/// Another program may keep the file to itself for the moment in which it writes it.
OwnedHandle OpenForReading(const std::wstring& path) {
  constexpr int kTries = 10;
  constexpr DWORD kPause = 10;
  OwnedHandle file;
  for (int tries = 0; tries < kTries; ++tries) {
    file = OwnedHandle(::CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (file.IsOpen() || ::GetLastError() != ERROR_SHARING_VIOLATION) break;
    ::Sleep(kPause);
  }
  return file;
}

bool ReadToEnd(HANDLE file, std::size_t limit, std::string& bytes) {
  constexpr DWORD kMostAtOnce = 1U << 30U;
  LARGE_INTEGER size{};
  if (::GetFileSizeEx(file, &size) == 0 || static_cast<std::uint64_t>(size.QuadPart) > limit) return false;
  // One byte more shows whether the file has grown meanwhile.
  bytes.resize(static_cast<std::size_t>(size.QuadPart) + 1);
  std::size_t filled = 0;
  while (true) {
    const auto wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - filled, kMostAtOnce));
    DWORD count = 0;
    if (::ReadFile(file, bytes.data() + filled, wanted, &count, nullptr) == 0) return false;
    if (count == 0) break;
    filled += count;
    if (filled > limit) return false;
    if (filled == bytes.size()) bytes.resize(filled + filled / 2 + 4096);
  }
  bytes.resize(filled);
  return true;
}

/// What the new file gets from the old one besides its rights. What its folder has given it stays.
void KeepAttributes(HANDLE file, DWORD attributes) {
  FILE_BASIC_INFO made{};
  if ((attributes & kKeptAttributes) == 0) return;
  if (::GetFileInformationByHandleEx(file, FileBasicInfo, &made, sizeof made) == 0) return;
  FILE_BASIC_INFO info{};  // times that are 0 are left alone
  info.FileAttributes = made.FileAttributes | (attributes & kKeptAttributes);
  ::SetFileInformationByHandle(file, FileBasicInfo, &info, sizeof info);
}

/// The file that is really meant, and its attributes; nothing for what is no regular file that may be
/// replaced.
struct Target {
  std::wstring path;
  DWORD attributes = INVALID_FILE_ATTRIBUTES;
  [[nodiscard]] bool Exists() const { return attributes != INVALID_FILE_ATTRIBUTES; }
};

std::optional<Target> TargetOf(const std::wstring& path) {
  Target target{path, ::GetFileAttributesW(path.c_str())};
  if (!target.Exists())
    return ::GetLastError() == ERROR_FILE_NOT_FOUND ? std::optional(target) : std::nullopt;
  if ((target.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    const auto resolved = ResolvedPath(path);
    if (!resolved) return std::nullopt;
    target = {*resolved, ::GetFileAttributesW(resolved->c_str())};
  }
  constexpr DWORD kUnfit = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DEVICE;
  if (!target.Exists() || (target.attributes & kUnfit) != 0) return std::nullopt;
  return target;
}

}  // namespace

std::pair<ProfileReading, FileState> StateOf(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA known{};
  if (::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &known) == 0) {
    return {FailureOf(::GetLastError()), {}};
  }
  const bool is_link = (known.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  if (!is_link) return {ProfileReading::kRead, StateIn(known)};
  const OwnedHandle file(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!file.IsOpen()) return {FailureOf(::GetLastError()), {}};
  return {ProfileReading::kRead, StateOf(file.Get())};
}

ProfileBytes ReadRegularFile(const std::wstring& path, std::size_t limit) {
  const OwnedHandle file = OpenForReading(path);
  if (!file.IsOpen()) return {FailureOf(::GetLastError()), {}, {}};
  if (::GetFileType(file.Get()) != FILE_TYPE_DISK) return {};
  ProfileBytes read{ProfileReading::kRead, {}, StateOf(file.Get())};
  return ReadToEnd(file.Get(), limit, read.bytes) ? std::move(read) : ProfileBytes{};
}

std::optional<FileState> ReplaceFile(const std::wstring& path, std::string_view bytes,
                                     const FileCreation& create) {
  const auto target = TargetOf(path);
  if (!target) return std::nullopt;
  RemoveLeftovers(target->path);
  const FileRights rights = target->Exists() ? FileRights::Of(target->path) : FileRights({});
  TemporaryFile temporary(target->path, rights.AreItsOwn() ? AccessRights::kChange : AccessRights::kKeep,
                          create);
  std::size_t written = 0;
  if (!temporary.IsOpen() || !WriteAll(temporary.Get(), bytes, written)) return std::nullopt;
  if (target->Exists()) KeepAttributes(temporary.Get(), target->attributes);
  // Contents that could not be saved would be the greater loss.
  rights.GiveTo(temporary.Get());
  if (::FlushFileBuffers(temporary.Get()) == 0 || !temporary.ReplaceTarget()) return std::nullopt;
  return StateOf(temporary.Get());
}

bool WriteAll(HANDLE file, std::string_view bytes, std::size_t& written) {
  constexpr std::size_t kMostAtOnce = 1U << 20U;
  while (!bytes.empty()) {
    DWORD count = 0;
    const auto part = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    if (::WriteFile(file, bytes.data(), part, &count, nullptr) == 0 || count == 0) return false;
    written += count;
    bytes.remove_prefix(count);
  }
  return true;
}

}  // namespace platform::win32
