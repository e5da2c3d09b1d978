#include "platform/posix/ini_file.h"

#include <sys/stat.h>
#include <time.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <exception>
#include <functional>
#include <string_view>
#include <utility>

#include "platform/posix/folder_lock.h"
#include "platform/posix/native_names.h"

namespace platform::posix {
namespace {

std::int64_t NowNanoseconds() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// Time stamps advance in steps of some milliseconds, so that two changes within one step look alike. A stamp
/// from another machine's clock that lies further ahead says nothing about this and counts as old.
bool IsFresh(const FileStamp& stamp, std::int64_t now) {
  constexpr std::int64_t kStep = 100'000'000;
  return stamp.changed > now - kStep && stamp.changed < now + kStep;
}

std::size_t HashOf(std::string_view bytes) { return std::hash<std::string_view>()(bytes); }

}  // namespace

IniFile::IniFile(TextConversion& conversion, std::string path)
    : conversion_(conversion), path_(std::move(path)), document_(conversion, {}) {}

IniDocument& IniFile::Read() {
  if (edits_.empty() && !IsCurrent()) Load();
  return document_;
}

bool IniFile::IsCurrent() {
  if (state_ == State::kUnknown || state_ == State::kUnreadable) return false;
  struct stat status {};
  if (::stat(path_.c_str(), &status) != 0) return state_ == State::kMissing && errno == ENOENT;
  if (state_ == State::kMissing || StampOf(status) != stamp_) return false;
  if (!is_fresh_) return true;
  const std::int64_t now = NowNanoseconds();
  const ReadResult result = ReadRegularFile(path_, kLargestIniFile);
  if (!result.file || result.file->stamp != stamp_ || HashOf(result.file->bytes) != hash_) return false;
  is_fresh_ = IsFresh(stamp_, now);
  return true;
}

void IniFile::Load() {
  Forget();
  const std::int64_t now = NowNanoseconds();
  ReadResult result = ReadRegularFile(path_, kLargestIniFile);
  if (!result.file) {
    state_ = result.failure == ReadFailure::kMissing ? State::kMissing : State::kUnreadable;
    return;
  }
  stamp_ = result.file->stamp;
  is_fresh_ = IsFresh(stamp_, now);
  hash_ = HashOf(result.file->bytes);
  document_ = IniDocument(conversion_, std::move(result.file->bytes));
  state_ = State::kRead;
}

void IniFile::Forget() {
  state_ = State::kUnknown;
  document_ = IniDocument(conversion_, {});
  has_changes_ = false;
}

bool IniFile::Collect(IniEdit edit) {
  Read();
  edits_.push_back(std::move(edit));
  if (Apply(edits_.back())) return true;
  edits_.pop_back();
  return false;
}

void IniFile::Abandon() {
  if (edits_.empty()) return;
  edits_.clear();
  Forget();
}

bool IniFile::Apply(const IniEdit& edit) {
  IniChange change = IniChange::kNone;
  if (edit.inserted) {
    change = document_.InsertSection(*edit.inserted);
  } else if (!edit.key) {
    change = document_.DeleteSection(edit.section);
  } else if (!edit.value) {
    change = document_.DeleteKey(edit.section, *edit.key);
  } else {
    change = document_.SetValue(edit.section, *edit.key, *edit.value);
  }
  if (change == IniChange::kMade) has_changes_ = true;
  return change != IniChange::kRefused;
}

bool IniFile::Write() {
  if (edits_.empty()) return true;
  const std::vector<IniEdit> edits = std::exchange(edits_, {});
  bool written = false;
  try {
    written = WriteTogether(edits);
  } catch (const std::exception&) {
    written = false;
  }
  if (!written) Forget();
  return written;
}

bool IniFile::WriteTogether(const std::vector<IniEdit>& edits) {
  const auto target = FollowLinks(path_);
  if (!target) return false;
  const FolderLock lock(FolderOf(*target));
  if (lock.Get() == FolderLock::State::kBusy) return false;
  if (lock.Get() == FolderLock::State::kNoFolder) return !has_changes_;
  return MergeWithDisk(edits) && (!has_changes_ || Replace());
}

/// Another program may have written since the document was read: then the changes are made again, on what
/// stands there now.
bool IniFile::MergeWithDisk(const std::vector<IniEdit>& edits) {
  if (IsCurrent()) return true;
  Load();
  if (state_ == State::kUnreadable) return false;
  return std::all_of(edits.begin(), edits.end(), [this](const IniEdit& edit) { return Apply(edit); });
}

bool IniFile::Replace() {
  std::string bytes = document_.Bytes();
  const auto stamp = ReplaceFile(path_, bytes);
  if (!stamp) return false;
  stamp_ = *stamp;
  is_fresh_ = IsFresh(stamp_, NowNanoseconds());
  hash_ = HashOf(bytes);
  document_ = IniDocument(conversion_, std::move(bytes));
  has_changes_ = false;
  state_ = State::kRead;
  return true;
}

}  // namespace platform::posix
