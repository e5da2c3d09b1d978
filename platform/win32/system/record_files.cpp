#include "platform/win32/system/record_files.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/win32/system/system_path.h"
#include "platform/win32/system/whole_file.h"

namespace platform::win32 {
namespace {

constexpr std::size_t kBufferSize = 64 * 1024;

bool IsPlainName(const Text& name) {
  return !name.empty() && name.find_first_of(u"\\/:") == Text::npos && name != u"." && name != u"..";
}

/// The path of a file directly inside a folder; nothing for what could lead elsewhere.
std::optional<std::wstring> PathIn(const Text& folder, const Text& name) {
  if (folder.empty() || !IsPlainName(name)) return std::nullopt;
  const bool has_separator = folder.ends_with(u'\\') || folder.ends_with(u'/');
  return SystemPath(folder + (has_separator ? u"" : u"\\") + name);
}

/// A link is opened itself and then refused; nobody else may write meanwhile.
OwnedHandle OpenAt(const std::wstring& path, DWORD creation) {
  return OwnedHandle(::CreateFileW(path.c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES,
                                   FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, creation,
                                   FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

/// The system keeps accepting bytes for a file that is being removed, but nobody can find them any more.
bool HasName(const OwnedHandle& file) {
  FILE_STANDARD_INFO info{};
  return ::GetFileInformationByHandleEx(file.Get(), FileStandardInfo, &info, sizeof info) != 0 &&
         info.NumberOfLinks > 0 && info.DeletePending == 0;
}

bool IsRecording(const OwnedHandle& file) {
  constexpr DWORD kUnfit = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
  BY_HANDLE_FILE_INFORMATION info{};
  return ::GetFileType(file.Get()) == FILE_TYPE_DISK &&
         ::GetFileInformationByHandle(file.Get(), &info) != 0 && (info.dwFileAttributes & kUnfit) == 0 &&
         info.nNumberOfLinks == 1;
}

}  // namespace

Win32RecordFiles::~Win32RecordFiles() {
  for (auto& [handle, recording] : recordings_) FlushBuffer(recording);
}

RecordFile Win32RecordFiles::Keep(OwnedHandle file) {
  const RecordFile handle{++last_recording_};
  recordings_.emplace(handle, Recording{std::move(file), {}});
  return handle;
}

RecordFile Win32RecordFiles::OpenBinary(const Text& folder, const Text& file_name) {
  const NewRecordFile created = CreateBinary(folder, file_name);
  if (!created.name_is_taken) return created.file;
  const auto path = PathIn(folder, file_name);
  OwnedHandle file = path ? OpenAt(*path, OPEN_EXISTING) : OwnedHandle();
  return file.IsOpen() && IsRecording(file) ? Keep(std::move(file)) : RecordFile::kNone;
}

NewRecordFile Win32RecordFiles::CreateBinary(const Text& folder, const Text& file_name) {
  const auto path = PathIn(folder, file_name);
  if (!path) return {};
  OwnedHandle file = OpenAt(*path, CREATE_NEW);
  if (!file.IsOpen()) {
    const DWORD error = ::GetLastError();
    return {RecordFile::kNone, error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS};
  }
  // The names of devices are in every folder.
  if (!IsRecording(file)) return {};
  return {Keep(std::move(file)), false};
}

bool Win32RecordFiles::FlushBuffer(Recording& recording) {
  std::size_t written = 0;
  const bool complete = WriteAll(recording.file.Get(), recording.buffer, written);
  recording.buffer.erase(0, written);
  return complete;
}

bool Win32RecordFiles::WriteBytes(RecordFile file, std::span<const std::byte> bytes) {
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

bool Win32RecordFiles::Flush(RecordFile file) {
  const auto found = recordings_.find(file);
  return found != recordings_.end() && FlushBuffer(found->second) && HasName(found->second.file);
}

void Win32RecordFiles::Close(RecordFile file) {
  const auto found = recordings_.find(file);
  if (found == recordings_.end()) return;
  FlushBuffer(found->second);
  recordings_.erase(found);
}

std::size_t Win32RecordFiles::LongestFileName(const Text& folder) {
  constexpr std::size_t kUsual = 255;
  constexpr std::size_t kShortest = 32;
  const std::size_t used = folder.size() + 2;
  if (used + kShortest > MAX_PATH) return kShortest;
  return std::min(kUsual, MAX_PATH - used);
}

}  // namespace platform::win32
