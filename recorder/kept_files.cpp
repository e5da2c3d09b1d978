#include "recorder/kept_files.h"

#include <array>
#include <utility>

#include "app/text/numbers.h"
#include "app/text/text_utilities.h"

namespace recorder {

using platform::RecordFile;
using platform::Text;
using platform::TextView;

namespace {

constexpr int kLastNumber = 99'999;
constexpr std::size_t kLongestMark = 8;  // " (99999)"

// File managers and players skip names that begin with a dot.
Text VisibleName(Text file_name) {
  if (file_name.starts_with(u'.')) file_name.front() = u'_';
  return file_name;
}

}  // namespace

Text NumberedName(const Text& file_name, int number) {
  constexpr std::array<TextView, 3> kExtensions = {u".mp3", u".m4a", u".ogg"};
  std::size_t at = file_name.size();
  for (const TextView extension : kExtensions) {
    if (TextView(file_name).ends_with(extension)) at = file_name.size() - extension.size();
  }
  return file_name.substr(0, at) + u" (" + app::FormatNumber(number) + u")" + file_name.substr(at);
}

RecordFile KeptFiles::OpenBinary(const Text& folder, const Text& file_name) {
  const Text name = VisibleName(file_name);
  const bool goes_on = current_ != RecordFile::kNone && folder == folder_ && name == wanted_name_;
  if (goes_on) return current_;
  EndConnection();
  folder_ = folder;
  wanted_name_ = name;
  current_ = RecordFile{++last_};
  return current_;
}

platform::NewRecordFile KeptFiles::CreateBinary(const Text& folder, const Text& file_name) {
  return {OpenBinary(folder, file_name)};
}

bool KeptFiles::WriteBytes(RecordFile file, std::span<const std::byte> bytes) {
  if (file == RecordFile::kNone || file != current_) return false;
  if (below_ == RecordFile::kNone && !MakeFile()) return Fail(Failure::kNotMade);
  if (!inner_.WriteBytes(below_, bytes)) return Fail(Failure::kNotWritten);
  bytes_ += bytes.size();
  return true;
}

bool KeptFiles::Flush(RecordFile file) {
  if (file == RecordFile::kNone || file != current_) return false;
  if (below_ == RecordFile::kNone || inner_.Flush(below_)) return true;
  if (files_.PathFileExistsW(path_)) return Fail(Failure::kNotWritten);
  inner_.Close(std::exchange(below_, RecordFile::kNone));
  return true;
}

void KeptFiles::Close(RecordFile /*file*/) {}

std::size_t KeptFiles::LongestFileName(const Text& folder) {
  const std::size_t longest = inner_.LongestFileName(folder);
  return longest > kLongestMark ? longest - kLongestMark : 0;
}

void KeptFiles::EndConnection() {
  inner_.Close(std::exchange(below_, RecordFile::kNone));
  current_ = RecordFile::kNone;
}

bool KeptFiles::MakeFile() {
  for (int number = 1; number <= kLastNumber; ++number) {
    const Text name = number == 1 ? wanted_name_ : NumberedName(wanted_name_, number);
    const platform::NewRecordFile made = inner_.CreateBinary(folder_, name);
    if (made.name_is_taken) continue;
    below_ = made.file;
    if (below_ == RecordFile::kNone) return false;
    path_ = app::AddBackslash(folder_) + name;
    ++file_count_;
    return true;
  }
  return false;
}

bool KeptFiles::Fail(Failure failure) {
  failure_ = failure;
  return false;
}

}  // namespace recorder
