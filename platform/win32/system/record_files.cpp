#include "platform/win32/system/record_files.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/win32/system/owned_handle.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/whole_file.h"

namespace platform::win32 {
namespace {

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

bool IsRecording(const OwnedHandle& file) {
  constexpr DWORD kUnfit = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
  BY_HANDLE_FILE_INFORMATION info{};
  return ::GetFileType(file.Get()) == FILE_TYPE_DISK &&
         ::GetFileInformationByHandle(file.Get(), &info) != 0 && (info.dwFileAttributes & kUnfit) == 0 &&
         info.nNumberOfLinks == 1;
}

class Win32Recording final : public disk::OpenRecording {
 public:
  explicit Win32Recording(OwnedHandle file) : file_(std::move(file)) {}
  bool Write(std::string_view bytes, std::size_t& written) override {
    return WriteAll(file_.Get(), bytes, written);
  }
  [[nodiscard]] bool HasName() const override {
    FILE_STANDARD_INFO info{};
    return ::GetFileInformationByHandleEx(file_.Get(), FileStandardInfo, &info, sizeof info) != 0 &&
           info.NumberOfLinks > 0 && info.DeletePending == 0;
  }

 private:
  OwnedHandle file_;
};

}  // namespace

RecordFile Win32RecordFiles::OpenBinary(const Text& folder, const Text& file_name) {
  const NewRecordFile created = CreateBinary(folder, file_name);
  if (!created.name_is_taken) return created.file;
  const auto path = PathIn(folder, file_name);
  OwnedHandle file = path ? OpenAt(*path, OPEN_EXISTING) : OwnedHandle();
  if (!file.IsOpen() || !IsRecording(file)) return RecordFile::kNone;
  return Keep(std::make_unique<Win32Recording>(std::move(file)));
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
  return {Keep(std::make_unique<Win32Recording>(std::move(file)))};
}

std::size_t Win32RecordFiles::LongestFileName(const Text& folder) {
  constexpr std::size_t kUsual = 255;
  constexpr std::size_t kShortest = 32;
  const std::size_t used = folder.size() + 2;
  if (used + kShortest > MAX_PATH) return kShortest;
  return std::min(kUsual, MAX_PATH - used);
}

}  // namespace platform::win32
