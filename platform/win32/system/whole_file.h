#pragma once
// Reads a regular file at once and replaces one in a single step. Names are in the form of SystemPath.
// Not for files that grow while they are written, nor for the meaning of their bytes.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/win32/base/handles.h"
#include "platform/win32/system/temporary_file.h"
#include "ports/profile_files.h"

namespace platform::win32 {

/// The stamp is made of the size and the times of creation and writing. Only a link is opened.
std::pair<ProfileReading, FileState> StateOf(const std::wstring& path);

/// The bytes of a regular file of at most `limit` bytes. Never waits for the other end of a pipe or for a
/// device.
ProfileBytes ReadRegularFile(const std::wstring& path, std::size_t limit);

/// Creates the file or replaces its contents in one step: a temporary file beside it is written, brought to
/// the disk and renamed; one that an earlier, killed replacement left there is removed. Attributes of an
/// existing file and the access rights that were set for itself are kept where the system allows it, and so
/// is a symbolic link to a file (its target is replaced); other rights are those of the folder. Nothing when
/// it failed (no such folder, read-only file or folder, no regular file, full disk, in use by a program that
/// does not share it); the file is then unchanged.
std::optional<FileState> ReplaceFile(const std::wstring& path, std::string_view bytes,
                                     const FileCreation& create = CreateNewFile);

/// Writes all of `bytes`; false when the system took only a part of them, whose size is added to `written`.
bool WriteAll(HANDLE file, std::string_view bytes, std::size_t& written);

}  // namespace platform::win32
