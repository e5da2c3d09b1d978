#pragma once
// Port: what the INI engine needs from a disk: reading a file at once, replacing one in a single step,
// keeping others out. Not for the format of the bytes, nor for files of any other part of the program
// (ports/files.h).

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

/// Distinguishes one state of a file from another: which file it is, its size and its times, in the system's
/// own numbers. Only for comparing.
struct FileStamp {
  std::array<std::uint64_t, 6> numbers{};

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// A file's state. While it is fresh the next change may leave the stamp as it is, because time stamps
/// advance in steps: then only the bytes show a change.
struct FileState {
  FileStamp stamp;
  bool is_fresh = false;
};

enum class ProfileReading : std::uint8_t {
  kRead,
  kMissing,    ///< there is nothing under this name
  kUnreadable  ///< there is something, but no readable regular file within the limit
};

struct ProfileBytes {
  ProfileReading reading = ProfileReading::kUnreadable;
  std::string bytes;  ///< with kRead, as is `state`
  FileState state;
};

/// The right to change the files of one folder; zero is none.
enum class ProfileLock : std::uint32_t { kNone = 0 };

struct ProfileLocking {
  enum class Result : std::uint8_t {
    kHeld,      ///< also, without a lock, where the system has none
    kNoFolder,  ///< there is no such folder
    kFailed     ///< another program did not release it within five seconds, or the name leads nowhere
  };
  Result result = Result::kFailed;
  ProfileLock lock = ProfileLock::kNone;  ///< may be kNone with kHeld
};

/// Names are the system's own, as NativePaths gives them; they are not empty and hold no NUL. Nothing here
/// throws. Order of a change: Lock, Stamp or Read again, Replace, Unlock.
class ProfileFiles {
 public:
  virtual ~ProfileFiles() = default;

  /// The stamp alone, without opening the file. `reading` is kRead, kMissing or kUnreadable as far as that
  /// shows it.
  virtual std::pair<ProfileReading, FileStamp> Stamp(const std::string& name) = 0;

  /// The bytes of a regular file of at most `limit` bytes. Never waits for anything but the disk.
  virtual ProfileBytes Read(const std::string& name, std::size_t limit) = 0;

  /// Creates the file or replaces its contents in one step, so that at every moment the name refers to either
  /// the old bytes or the new ones. Permissions and owner are kept where the system allows it, and a link
  /// remains a link (its target is replaced). What an earlier, killed replacement of this file left behind is
  /// removed. Nothing when it failed (no such folder, read-only file or folder, no regular file, full disk);
  /// the file is then unchanged.
  virtual std::optional<FileState> Replace(const std::string& name, std::string_view bytes) = 0;

  /// Keeps everyone else who asks for the lock of this file's folder waiting until Unlock or the end of the
  /// process.
  virtual ProfileLocking Lock(const std::string& name) = 0;

  /// kNone is allowed and does nothing.
  virtual void Unlock(ProfileLock lock) = 0;
};

/// Holds the lock of a file's folder for a scope.
class ProfileLockHolder {
 public:
  ProfileLockHolder(ProfileFiles& files, const std::string& name)
      : files_(files), locking_(files.Lock(name)) {}
  ~ProfileLockHolder() { files_.Unlock(locking_.lock); }
  ProfileLockHolder(const ProfileLockHolder&) = delete;
  ProfileLockHolder& operator=(const ProfileLockHolder&) = delete;

  [[nodiscard]] ProfileLocking::Result Result() const { return locking_.result; }

 private:
  ProfileFiles& files_;
  ProfileLocking locking_;
};

}  // namespace platform
