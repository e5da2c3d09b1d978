#include "platform/posix/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/native_names.h"
#include "platform/posix/temporary_file.h"

namespace platform::posix {
namespace {

constexpr mode_t kPermissionBits = 07777;
constexpr mode_t kNewFile = 0666;
constexpr mode_t kOwnerOnly = 0600;

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

ReadFailure FailureOf(int error) {
  return error == ENOENT || error == ENOTDIR ? ReadFailure::kMissing : ReadFailure::kUnreadable;
}

/// A size of zero proves nothing: files of the kernel have bytes all the same.
bool ReadToEnd(int file, std::size_t expected, std::size_t limit, std::string& bytes) {
  bytes.resize(expected + 1);
  std::size_t filled = 0;
  while (true) {
    const ssize_t count = ::read(file, bytes.data() + filled, bytes.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
    if (filled > limit) return false;
    if (filled == bytes.size()) bytes.resize(filled + filled / 2 + 4096);
  }
  bytes.resize(filled);
  return true;
}

/// The new file gets the old one's owner and permissions as far as possible. The owner comes first, because
/// changing it clears some permission bits. A file system that keeps neither refuses both.
void CopyOwnerAndPermissions(int file, const struct stat& old) {
  const bool owned =
      ::fchown(file, old.st_uid, old.st_gid) == 0 || ::fchown(file, static_cast<uid_t>(-1), old.st_gid) == 0;
  const mode_t mode = old.st_mode & kPermissionBits;
  static_cast<void>(::fchmod(file, owned ? mode : mode & ~static_cast<mode_t>(S_ISUID | S_ISGID)));
}

/// Some file systems know no such request; their files are as safe as they get.
bool BringToDisk(int file) { return ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP; }

bool MayReplace(const std::string& path, const struct stat& old) {
  return S_ISREG(old.st_mode) && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

bool Fill(int file, std::string_view bytes, const struct stat* old) {
  std::size_t written = 0;
  if (!WriteAll(file, bytes, written)) return false;
  if (old != nullptr) CopyOwnerAndPermissions(file, *old);
  return BringToDisk(file);
}

}  // namespace

DiskStamp StampOf(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim),
          Nanoseconds(status.st_ctim)};
}

ReadResult ReadRegularFile(const std::string& path, std::size_t limit) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file.IsOpen()) return {std::nullopt, FailureOf(errno)};
  struct stat status {};
  if (::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > limit) return {};
  WholeFile whole{{}, StampOf(status)};
  if (!ReadToEnd(file.Get(), size, limit, whole.bytes)) return {};
  return {std::move(whole), {}};
}

std::optional<DiskStamp> ReplaceFile(const std::string& path, std::string_view bytes) {
  const auto target = FollowLinks(path);
  if (!target) return std::nullopt;
  struct stat old {};
  const bool exists = ::stat(target->c_str(), &old) == 0;
  if (exists ? !MayReplace(*target, old) : errno != ENOENT) return std::nullopt;

  RemoveLeftovers(*target);
  TemporaryFile temporary(*target, exists ? kOwnerOnly : kNewFile);
  if (!temporary.IsOpen() || !Fill(temporary.Get(), bytes, exists ? &old : nullptr) ||
      !temporary.ReplaceTarget()) {
    return std::nullopt;
  }
  // The file is complete either way; this makes its new name last through a loss of power as well.
  const FileDescriptor folder(::open(FolderOf(*target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.IsOpen()) ::fsync(folder.Get());
  struct stat status {};
  ::fstat(temporary.Get(), &status);
  return StampOf(status);
}

bool WriteAll(int file, std::string_view bytes, std::size_t& written) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    written += static_cast<std::size_t>(count);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace platform::posix
