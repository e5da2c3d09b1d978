#include "platform/ini/ini_file.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <string_view>
#include <utility>

namespace platform::ini {
namespace {

std::size_t HashOf(std::string_view bytes) { return std::hash<std::string_view>()(bytes); }

}  // namespace

IniFile::IniFile(ProfileFiles& disk, TextConversion& conversion, std::string name)
    : disk_(disk), conversion_(conversion), name_(std::move(name)), document_(conversion, {}) {}

IniDocument& IniFile::Read(std::uint64_t group) {
  const bool known = group != kNoGroup && read_in_ == group;
  if (!known && edits_.empty() && !IsCurrent()) Load();
  read_in_ = group;
  return document_;
}

bool IniFile::IsCurrent() {
  if (state_ == State::kUnknown || state_ == State::kUnreadable) return false;
  const auto [reading, stamp] = disk_.Stamp(name_);
  if (reading != ProfileReading::kRead)
    return state_ == State::kMissing && reading == ProfileReading::kMissing;
  if (state_ == State::kMissing || stamp != on_disk_.stamp) return false;
  if (!on_disk_.is_fresh) return true;
  const ProfileBytes now = disk_.Read(name_, kLargestIniFile);
  if (now.reading != ProfileReading::kRead || HashOf(now.bytes) != hash_) return false;
  on_disk_ = now.state;
  return true;
}

void IniFile::Load() {
  Forget();
  ProfileBytes read = disk_.Read(name_, kLargestIniFile);
  if (read.reading != ProfileReading::kRead) {
    state_ = read.reading == ProfileReading::kMissing ? State::kMissing : State::kUnreadable;
    return;
  }
  on_disk_ = read.state;
  hash_ = HashOf(read.bytes);
  document_ = IniDocument(conversion_, std::move(read.bytes));
  state_ = State::kRead;
}

void IniFile::Forget() {
  state_ = State::kUnknown;
  read_in_ = kNoGroup;
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
    // Not written.
  }
  if (!written) Forget();
  return written;
}

bool IniFile::WriteTogether(const std::vector<IniEdit>& edits) {
  const ProfileLockHolder lock(disk_, name_);
  if (lock.Result() == ProfileLocking::Result::kFailed) return false;
  if (lock.Result() == ProfileLocking::Result::kNoFolder) return !has_changes_;
  return MergeWithDisk(edits) && (!has_changes_ || Replace());
}

/// Another program may have written since the document was read: then the changes are made again, on the
/// file's present contents.
bool IniFile::MergeWithDisk(const std::vector<IniEdit>& edits) {
  if (IsCurrent()) return true;
  Load();
  if (state_ == State::kUnreadable) return false;
  return std::all_of(edits.begin(), edits.end(), [this](const IniEdit& edit) { return Apply(edit); });
}

bool IniFile::Replace() {
  std::string bytes = document_.Bytes();
  const auto replaced = disk_.Replace(name_, bytes);
  if (!replaced) return false;
  on_disk_ = *replaced;
  hash_ = HashOf(bytes);
  document_ = IniDocument(conversion_, std::move(bytes));
  has_changes_ = false;
  state_ = State::kRead;
  return true;
}

}  // namespace platform::ini
