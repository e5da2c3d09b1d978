#include "platform/win32/system/folder_lock.h"

#include "platform/win32/base/windows_api.h"

#include "platform/win32/system/system_path.h"

namespace platform::win32 {
namespace {

constexpr DWORD kLongestWait = 5000;

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

FolderLock::FolderLock(const std::wstring& folder) : state_(disk::FolderLocking::kNoFolder) {
  const std::wstring named = folder.empty() ? L"." : folder;
  if (!IsFolder(named)) return;
  state_ = disk::FolderLocking::kHeld;
  const std::wstring name = L"Global\\Funkhausplayer-folder-" + NumberOf(ResolvedPath(named).value_or(named));
  OwnedHandle mutex(::CreateMutexW(nullptr, FALSE, name.c_str()));
  if (!mutex.IsOpen()) return;
  // A program that was killed while it held the lock has left whole files behind, as always.
  const DWORD result = ::WaitForSingleObject(mutex.Get(), kLongestWait);
  if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) {
    mutex_ = std::move(mutex);
  } else {
    state_ = disk::FolderLocking::kBusy;
  }
}

FolderLock::~FolderLock() {
  if (mutex_.IsOpen()) ::ReleaseMutex(mutex_.Get());
}

}  // namespace platform::win32
