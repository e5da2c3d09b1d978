#include "platform/posix/record_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/posix/native_paths.h"
#include "platform/posix/whole_file.h"

namespace platform::posix {
namespace {

constexpr std::size_t kBufferSize = 64 * 1024;
constexpr int kSafely = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
constexpr mode_t kNewFile = 0666;
constexpr mode_t kAnyExecution = S_IXUSR | S_IXGRP | S_IXOTH;

bool IsPlainName(const Text& text, const std::string& native) {
  if (text.find_first_of(u"\\/") != Text::npos || !IsUsablePath(native)) return false;
  return native != "." && native != "..";
}

bool IsRecording(const struct stat& status) {
  return S_ISREG(status.st_mode) && status.st_nlink == 1 && (status.st_mode & kAnyExecution) == 0;
}

/// The system keeps accepting bytes for a file that has been removed, but nobody can find them any more.
bool HasName(const FileDescriptor& file) {
  struct stat status {};
  return ::fstat(file.Get(), &status) == 0 && status.st_nlink > 0;
}

/// Looks before it opens, because opening a device can already have an effect, and again afterwards, because
/// the entry may have changed in between.
FileDescriptor OpenExisting(int folder, const char* name) {
  struct stat status {};
  if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0 || !IsRecording(status)) return {};
  FileDescriptor file(::openat(folder, name, O_WRONLY | kSafely));
  if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0 || !IsRecording(status)) return {};
  return file;
}

FileDescriptor CreateIn(int folder, const char* name) {
  return FileDescriptor(::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | kSafely, kNewFile));
}

}  // namespace

PosixRecordFiles::PosixRecordFiles(NativePaths& paths) : paths_(paths) {}

PosixRecordFiles::~PosixRecordFiles() {
  for (auto& [handle, recording] : recordings_) FlushBuffer(recording);
}

FileDescriptor PosixRecordFiles::FolderFor(const Text& folder, const Text& file_name) {
  const std::string native = paths_.ToNative(folder);
  if (!IsUsablePath(native) || !IsPlainName(file_name, paths_.ToNative(file_name))) return {};
  return FileDescriptor(::open(native.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

RecordFile PosixRecordFiles::Keep(FileDescriptor file) {
  if (!file.IsOpen()) return RecordFile::kNone;
  const RecordFile handle{++last_recording_};
  recordings_.emplace(handle, Recording{std::move(file), {}});
  return handle;
}

RecordFile PosixRecordFiles::OpenBinary(const Text& folder, const Text& file_name) {
  const NewRecordFile created = CreateBinary(folder, file_name);
  if (!created.name_is_taken) return created.file;
  const FileDescriptor opened_folder = FolderFor(folder, file_name);
  return opened_folder.IsOpen() ? Keep(OpenExisting(opened_folder.Get(), paths_.ToNative(file_name).c_str()))
                                : RecordFile::kNone;
}

NewRecordFile PosixRecordFiles::CreateBinary(const Text& folder, const Text& file_name) {
  const FileDescriptor opened_folder = FolderFor(folder, file_name);
  if (!opened_folder.IsOpen()) return {};
  FileDescriptor file = CreateIn(opened_folder.Get(), paths_.ToNative(file_name).c_str());
  if (!file.IsOpen()) return {RecordFile::kNone, errno == EEXIST};
  return {Keep(std::move(file))};
}

bool PosixRecordFiles::FlushBuffer(Recording& recording) {
  std::size_t written = 0;
  const bool complete = WriteAll(recording.file.Get(), recording.buffer, written);
  recording.buffer.erase(0, written);
  return complete;
}

bool PosixRecordFiles::WriteBytes(RecordFile file, std::span<const std::byte> bytes) {
  const auto found = recordings_.find(file);
  if (found == recordings_.end()) return false;
  Recording& recording = found->second;
  std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  while (!rest.empty()) {
    if (recording.buffer.size() >= kBufferSize && !FlushBuffer(recording)) return false;
    const std::string_view part = rest.substr(0, kBufferSize - recording.buffer.size());
    recording.buffer += part;
    rest.remove_prefix(part.size());
  }
  return true;
}

bool PosixRecordFiles::Flush(RecordFile file) {
  const auto found = recordings_.find(file);
  return found != recordings_.end() && FlushBuffer(found->second) && HasName(found->second.file);
}

void PosixRecordFiles::Close(RecordFile file) {
  const auto found = recordings_.find(file);
  if (found == recordings_.end()) return;
  FlushBuffer(found->second);
  recordings_.erase(found);
}

std::size_t PosixRecordFiles::LongestFileName(const Text& folder) {
  constexpr std::size_t kUsual = 255;
  const std::string native = paths_.ToNative(folder);
  if (!IsUsablePath(native)) return kUsual;
  const long longest = ::pathconf(native.c_str(), _PC_NAME_MAX);
  return longest > 0 ? static_cast<std::size_t>(longest) : kUsual;
}

}  // namespace platform::posix
