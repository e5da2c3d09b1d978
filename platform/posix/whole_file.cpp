#include "platform/posix/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <random>
#include <utility>

#include "platform/posix/file_descriptor.h"

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

/// A size of zero is no promise: files of the kernel give bytes all the same.
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

std::string TemporaryName(const std::string& folder) {
  std::random_device random;
  std::array<char, 48> name{};
  std::snprintf(name.data(), name.size(), "/.funkhaus-%08x%08x.tmp", random(), random());
  return folder + name.data();
}

/// The new file takes over what it can of the old one's owner and permissions. The owner goes first, because
/// changing it takes some permission bits away.
bool TakeOver(int file, const struct stat& old) {
  const bool owned =
      ::fchown(file, old.st_uid, old.st_gid) == 0 || ::fchown(file, static_cast<uid_t>(-1), old.st_gid) == 0;
  const mode_t mode = old.st_mode & kPermissionBits;
  return ::fchmod(file, owned ? mode : mode & ~static_cast<mode_t>(S_ISUID | S_ISGID)) == 0;
}

/// Some file systems know no such request; their files are as safe as they get.
bool BringToDisk(int file) { return ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP; }

bool MayReplace(const std::string& path, const struct stat& old) {
  return S_ISREG(old.st_mode) && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

bool Fill(int file, std::string_view bytes, const struct stat* old) {
  std::size_t written = 0;
  if (!WriteAll(file, bytes, written)) return false;
  if (old != nullptr && !TakeOver(file, *old)) return false;
  return BringToDisk(file);
}

}  // namespace

FileStamp StampOf(const struct stat& status) {
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

std::optional<std::string> FollowLinks(const std::string& path) {
  constexpr int kMostLinks = 40;
  std::string current = path;
  for (int links = 0; links < kMostLinks; ++links) {
    std::array<char, PATH_MAX> target{};
    const ssize_t size = ::readlink(current.c_str(), target.data(), target.size());
    if (size < 0) return current;
    const std::string next(target.data(), static_cast<std::size_t>(size));
    current = next.starts_with('/') ? next : FolderOf(current) + "/" + next;
  }
  return std::nullopt;
}

std::string FolderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::optional<FileStamp> ReplaceFile(const std::string& path, std::string_view bytes) {
  const auto target = FollowLinks(path);
  if (!target) return std::nullopt;
  struct stat old {};
  const bool exists = ::stat(target->c_str(), &old) == 0;
  if (exists ? !MayReplace(*target, old) : errno != ENOENT) return std::nullopt;

  const std::string folder = FolderOf(*target);
  const std::string temporary = TemporaryName(folder);
  const FileDescriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                   exists ? kOwnerOnly : kNewFile));
  if (!file.IsOpen()) return std::nullopt;
  if (!Fill(file.Get(), bytes, exists ? &old : nullptr) ||
      ::rename(temporary.c_str(), target->c_str()) != 0) {
    ::unlink(temporary.c_str());
    return std::nullopt;
  }
  // The file is complete either way; this makes its new name last through a loss of power as well.
  const FileDescriptor opened_folder(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened_folder.IsOpen()) ::fsync(opened_folder.Get());
  struct stat status {};
  ::fstat(file.Get(), &status);
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
