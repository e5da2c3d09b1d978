#include "platform/win32/system/temporary_file.h"

#include "platform/win32/base/windows_api.h"

#include <cstddef>
#include <cstring>
#include <random>
#include <utility>
#include <vector>

#include "platform/win32/base/wide.h"
#include "platform/win32/system/system_path.h"

namespace platform::win32 {
namespace {

constexpr const wchar_t* kEnding = L".tmp";

/// How the paths of all temporary files of the target begin.
std::wstring BeginningFor(const std::wstring& target) {
  const std::wstring folder = FolderOf(target);
  return folder + L".funkhaus-" + NumberOf(target.substr(folder.size())) + L"-";
}

/// The file's name may be so much longer than its target's that it needs the form of long paths alone.
std::wstring InSystemsForm(const std::wstring& path) { return SystemPath(FromWide(path)).value_or(path); }

std::wstring RandomDigits() {
  std::random_device random;
  return NumberOf(std::to_wstring(random()) + std::to_wstring(random()));
}

bool Rename(HANDLE file, const std::wstring& name) {
  const std::size_t bytes = name.size() * sizeof(wchar_t);
  std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + bytes);
  FILE_RENAME_INFO info{};
  info.ReplaceIfExists = TRUE;
  info.FileNameLength = static_cast<DWORD>(bytes);
  std::memcpy(buffer.data(), &info, sizeof info);
  std::memcpy(buffer.data() + offsetof(FILE_RENAME_INFO, FileName), name.data(), bytes);
  return ::SetFileInformationByHandle(file, FileRenameInfo, buffer.data(),
                                      static_cast<DWORD>(buffer.size())) != 0;
}

OwnedHandle Create(const std::wstring& path, AccessRights access_rights, const FileCreation& create) {
  constexpr DWORD kAccess = GENERIC_WRITE | DELETE;
  if (access_rights == AccessRights::kChange) {
    OwnedHandle file(create(path, kAccess | WRITE_DAC));
    if (file.IsOpen() || ::GetLastError() != ERROR_ACCESS_DENIED) return file;
  }
  return OwnedHandle(create(path, kAccess));
}

bool IsInUse(DWORD error) { return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED; }

}  // namespace

HANDLE CreateNewFile(const std::wstring& path, std::uint32_t access) {
  return ::CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

TemporaryFile::TemporaryFile(std::wstring target, AccessRights access_rights, const FileCreation& create)
    : target_(std::move(target)) {
  constexpr int kMostTries = 100;
  for (int tries = 0; tries < kMostTries && !file_.IsOpen(); ++tries) {
    file_ = Create(InSystemsForm(BeginningFor(target_) + RandomDigits() + kEnding), access_rights, create);
    if (!file_.IsOpen() && ::GetLastError() != ERROR_FILE_EXISTS) return;
  }
}

TemporaryFile::~TemporaryFile() {
  if (!IsOpen() || has_replaced_) return;
  FILE_DISPOSITION_INFO remove{};
  remove.DeleteFile = TRUE;
  ::SetFileInformationByHandle(Get(), FileDispositionInfo, &remove, sizeof remove);
}

bool TemporaryFile::ReplaceTarget() {
  constexpr int kTries = 50;
  constexpr DWORD kPause = 20;
  for (int tries = 0; tries < kTries; ++tries) {
    has_replaced_ = Rename(Get(), target_);
    if (has_replaced_ || !IsInUse(::GetLastError())) break;
    ::Sleep(kPause);
  }
  return has_replaced_;
}

void RemoveLeftovers(const std::wstring& target) {
  const std::wstring pattern = InSystemsForm(BeginningFor(target) + L"*" + kEnding);
  WIN32_FIND_DATAW found{};
  HANDLE const search = ::FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    ::DeleteFileW(InSystemsForm(FolderOf(target) + found.cFileName).c_str());
  } while (::FindNextFileW(search, &found) != 0);
  ::FindClose(search);
}

}  // namespace platform::win32
