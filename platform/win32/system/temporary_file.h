#pragma once
// The file in which new contents for another file are written before it replaces that file.
// Not for what is written or for whether it may be replaced (platform/win32/system/whole_file.h).

#include <cstdint>
#include <functional>
#include <string>

#include "platform/win32/base/handles.h"
#include "platform/win32/system/owned_handle.h"

namespace platform::win32 {

/// Creates a file at a path that does not exist, opened for this access, as the system's CreateFileW does.
using FileCreation = std::function<HANDLE(const std::wstring& path, std::uint32_t access)>;
HANDLE CreateNewFile(const std::wstring& path, std::uint32_t access);

/// What is to be done with the access rights that the system gives to the file.
enum class AccessRights { kKeep, kChange };

/// Is beside its target under a name that identifies the target. Nobody else can remove it while its writer
/// has it open, so that one whose writer was killed can be distinguished from one in use.
class TemporaryFile {
 public:
  /// A folder on another machine may take files but grant nobody to change their rights, whatever the
  /// folder's own rights say. There the file is opened nevertheless, and its rights cannot be changed.
  explicit TemporaryFile(std::wstring target, AccessRights access_rights = AccessRights::kKeep,
                         const FileCreation& create = CreateNewFile);
  /// Removes the file unless it has replaced its target.
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// False when the folder takes no new file.
  [[nodiscard]] bool IsOpen() const { return file_.IsOpen(); }
  [[nodiscard]] HANDLE Get() const { return file_.Get(); }

  /// Gives the file its target's name, in one step. Another program that has the target open, to search or to
  /// back it up, mostly does so for a moment only: for a second, it is tried again.
  bool ReplaceTarget();

 private:
  const std::wstring target_;
  OwnedHandle file_;
  bool has_replaced_ = false;
};

/// Removes the temporary files of this target whose writers were ended before they could do so.
void RemoveLeftovers(const std::wstring& target);

}  // namespace platform::win32
