#pragma once
// The file in which new contents for another file are written before it replaces that file.
// Not for what is written or for whether it may be replaced (platform/posix/whole_file.h).

#include <sys/types.h>

#include <string>

#include "platform/posix/file_descriptor.h"

namespace platform::posix {

/// Is beside its target under a name that identifies the target. Its writer keeps it locked, so that one
/// whose writer was killed can be distinguished from one in use. Where the file system has no locks, it has
/// none.
class TemporaryFile {
 public:
  /// Creates the file with these permissions, less what the process's mask removes.
  TemporaryFile(std::string target, mode_t permissions);
  /// Removes the file unless it has replaced its target.
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// False when the folder takes no new file.
  [[nodiscard]] bool IsOpen() const { return file_.IsOpen(); }
  [[nodiscard]] int Get() const { return file_.Get(); }
  [[nodiscard]] const std::string& Path() const { return path_; }

  /// Gives the file its target's name, in one step.
  bool ReplaceTarget();

 private:
  enum class Attempt { kIsOver, kDeservesAnother };
  Attempt Make(mode_t permissions);

  const std::string target_;
  std::string path_;
  FileDescriptor file_;
  bool has_replaced_ = false;
};

/// Removes the temporary files of this target whose writers were ended before they could do so.
void RemoveLeftovers(const std::string& target);

}  // namespace platform::posix
