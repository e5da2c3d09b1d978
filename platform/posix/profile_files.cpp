#include "platform/posix/profile_files.h"

#include <sys/stat.h>
#include <time.h>

#include <cerrno>
#include <cstdint>
#include <exception>
#include <optional>

#include "platform/posix/native_names.h"
#include "platform/posix/whole_file.h"

namespace platform::posix {
namespace {

std::int64_t NowNanoseconds() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// Time stamps advance in steps of some milliseconds, so that two changes within one step look alike. A stamp
/// from another machine's clock that lies further ahead says nothing about this and counts as old.
bool IsFresh(const DiskStamp& stamp, std::int64_t now) {
  constexpr std::int64_t kStep = 100'000'000;
  return stamp.changed > now - kStep && stamp.changed < now + kStep;
}

FileStamp Numbers(const DiskStamp& stamp) {
  return {{stamp.device, stamp.inode, static_cast<std::uint64_t>(stamp.size),
           static_cast<std::uint64_t>(stamp.modified), static_cast<std::uint64_t>(stamp.changed), 0}};
}

}  // namespace

std::pair<ProfileReading, FileStamp> PosixProfileFiles::Stamp(const std::string& name) {
  struct stat status {};
  if (::stat(name.c_str(), &status) == 0) return {ProfileReading::kRead, Numbers(StampOf(status))};
  const bool is_missing = errno == ENOENT || errno == ENOTDIR;
  return {is_missing ? ProfileReading::kMissing : ProfileReading::kUnreadable, {}};
}

ProfileBytes PosixProfileFiles::Read(const std::string& name, std::size_t limit) {
  try {
    const std::int64_t now = NowNanoseconds();
    ReadResult result = ReadRegularFile(name, limit);
    if (!result.file) {
      const bool is_missing = result.failure == ReadFailure::kMissing;
      return {is_missing ? ProfileReading::kMissing : ProfileReading::kUnreadable, {}, {}};
    }
    const DiskStamp& stamp = result.file->stamp;
    return {ProfileReading::kRead, std::move(result.file->bytes), {Numbers(stamp), IsFresh(stamp, now)}};
  } catch (const std::exception&) {
    return {};
  }
}

std::optional<FileState> PosixProfileFiles::Replace(const std::string& name, std::string_view bytes) {
  try {
    const auto stamp = ReplaceFile(name, bytes);
    if (!stamp) return std::nullopt;
    return FileState{Numbers(*stamp), IsFresh(*stamp, NowNanoseconds())};
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

ProfileLocking PosixProfileFiles::Lock(const std::string& name) {
  try {
    return TryLock(name);
  } catch (const std::exception&) {
    return {};
  }
}

ProfileLocking PosixProfileFiles::TryLock(const std::string& name) {
  const auto target = FollowLinks(name);
  if (!target) return {};
  return locks_.Keep(FolderLock(FolderOf(*target)));
}

void PosixProfileFiles::Unlock(ProfileLock lock) { locks_.Release(lock); }

}  // namespace platform::posix
