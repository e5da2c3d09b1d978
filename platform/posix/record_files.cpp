#include "platform/posix/record_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/posix/native_paths.h"
#include "platform/posix/whole_file.h"

namespace platform::posix {
namespace {

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

class PosixRecording final : public disk::OpenRecording {
 public:
  explicit PosixRecording(FileDescriptor file) : file_(std::move(file)) {}
  bool Write(std::string_view bytes, std::size_t& written) override {
    return WriteAll(file_.Get(), bytes, written);
  }
  [[nodiscard]] bool HasName() const override {
    struct stat status {};
    return ::fstat(file_.Get(), &status) == 0 && status.st_nlink > 0;
  }

 private:
  FileDescriptor file_;
};

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

FileDescriptor PosixRecordFiles::FolderFor(const Text& folder, const Text& file_name) {
  const std::string native = paths_.ToNative(folder);
  if (!IsUsablePath(native) || !IsPlainName(file_name, paths_.ToNative(file_name))) return {};
  return FileDescriptor(::open(native.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

RecordFile PosixRecordFiles::OpenBinary(const Text& folder, const Text& file_name) {
  const NewRecordFile created = CreateBinary(folder, file_name);
  if (!created.name_is_taken) return created.file;
  const FileDescriptor opened_folder = FolderFor(folder, file_name);
  if (!opened_folder.IsOpen()) return RecordFile::kNone;
  FileDescriptor file = OpenExisting(opened_folder.Get(), paths_.ToNative(file_name).c_str());
  return file.IsOpen() ? Keep(std::make_unique<PosixRecording>(std::move(file))) : RecordFile::kNone;
}

NewRecordFile PosixRecordFiles::CreateBinary(const Text& folder, const Text& file_name) {
  const FileDescriptor opened_folder = FolderFor(folder, file_name);
  if (!opened_folder.IsOpen()) return {};
  FileDescriptor file = CreateIn(opened_folder.Get(), paths_.ToNative(file_name).c_str());
  if (!file.IsOpen()) return {RecordFile::kNone, errno == EEXIST};
  return {Keep(std::make_unique<PosixRecording>(std::move(file)))};
}

std::size_t PosixRecordFiles::LongestFileName(const Text& folder) {
  constexpr std::size_t kUsual = 255;
  const std::string native = paths_.ToNative(folder);
  if (!IsUsablePath(native)) return kUsual;
  const long longest = ::pathconf(native.c_str(), _PC_NAME_MAX);
  return longest > 0 ? static_cast<std::size_t>(longest) : kUsual;
}

}  // namespace platform::posix
