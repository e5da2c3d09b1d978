#include "platform/win32/media/media_opener.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

#include "platform/win32/base/wide.h"
#include "platform/win32/media/media_address.h"

namespace platform::win32 {
namespace {

bool IsMissing(const Text& path) {
  if (GetFileAttributesW(Wide(path)) != INVALID_FILE_ATTRIBUTES) return false;
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

}  // namespace

OpenedObject MediaOpener::Open(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags) {
  const auto item = notes_->Open();
  OpenedObject opened = OpenKind(resolver, address, flags);
  if (opened.result == kErrorCancelled) {
    notes_->GivenUp(item);
  } else if (opened.result != kSOk) {
    notes_->OpeningFailed(item, opened.result);
  }
  return opened;
}

OpenedObject MediaOpener::OpenKind(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags) {
  const MediaAddress read = ReadAddress(address);
  if (read.kind == AddressKind::kNone) return {kEInvalidArg, kMfObjectInvalid, {}};
  const OpeningWait wait{loop_, std::chrono::steady_clock::now() + options_.deadline};
  OpenedObject opened = OpenAddress(resolver, read.text, flags, wait);
  // Not every system gives a missing file a result of its own.
  const bool failed = opened.result != kSOk && opened.result != kErrorCancelled;
  if (failed && read.kind == AddressKind::kFile && IsMissing(read.text)) opened.result = kErrorFileNotFound;
  return opened;
}

}  // namespace platform::win32
