#include "platform/win32/ui/icons.h"

#include "platform/win32/base/windows_api.h"

#include <objbase.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/picture_file.h"

namespace platform::win32 {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr std::uint64_t kLargestIconFile = 4 * 1024 * 1024;
constexpr std::uint64_t kLargestPictureFile = 32 * 1024 * 1024;
constexpr int kWidestIcon = 1024;

bool IsFileUpTo(const Text& path, std::uint64_t most) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (::GetFileAttributesExW(Wide(path), GetFileExInfoStandard, &data) == 0) return false;
  if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return false;
  const std::uint64_t size = (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
  return size > 0 && size <= most;
}

bool IsIconSize(int width, int height) {
  return width > 0 && height > 0 && width <= kWidestIcon && height <= kWidestIcon;
}

}  // namespace

Win32Icons::Win32Icons() : dots_(::GetDpiForSystem()) {}

Win32Icons::~Win32Icons() {
  for (const auto& [handle, list] : lists_) ::ImageList_Destroy(list);
  for (const auto& [handle, icon] : icons_) ::DestroyIcon(icon);
}

int Win32Icons::Device(int pixels) const {
  return ::MulDiv(pixels, static_cast<int>(dots_), USER_DEFAULT_SCREEN_DPI);
}

ImageListHandle Win32Icons::ImageList_Create(int width, int height, std::uint32_t flags, int initial,
                                             int grow) {
  if (!IsIconSize(width, height)) return ImageListHandle::kNone;
  HIMAGELIST list = ::ImageList_Create(Device(width), Device(height), flags, initial, grow);
  if (list == nullptr) return ImageListHandle::kNone;
  const ImageListHandle handle{++last_handle_};
  lists_[handle] = list;
  return handle;
}

int Win32Icons::ImageList_AddIcon(ImageListHandle list, IconHandle icon) {
  const auto target = lists_.find(list);
  const auto source = icons_.find(icon);
  if (target == lists_.end() || source == icons_.end()) return -1;
  return ::ImageList_ReplaceIcon(target->second, -1, source->second);
}

bool Win32Icons::ImageList_Destroy(ImageListHandle list) {
  const auto found = lists_.find(list);
  if (found == lists_.end()) return false;
  ::ImageList_Destroy(found->second);
  lists_.erase(found);
  return true;
}

IconHandle Win32Icons::LoadImageW(const Text& path, int width, int height) {
  if (!IsIconSize(width, height) || !IsFileUpTo(path, kLargestIconFile)) return IconHandle::kNone;
  const auto icon = static_cast<HICON>(
      ::LoadImageW(nullptr, Wide(path), IMAGE_ICON, Device(width), Device(height), LR_LOADFROMFILE));
  if (icon == nullptr) return IconHandle::kNone;
  const IconHandle handle{++last_handle_};
  icons_[handle] = icon;
  return handle;
}

bool Win32Icons::DestroyIcon(IconHandle icon) {
  const auto found = icons_.find(icon);
  if (found == icons_.end()) return false;
  ::DestroyIcon(found->second);
  icons_.erase(found);
  return true;
}

LoadedPicture Win32Icons::LoadPicture(const Text& path) {
  if (!IsFileUpTo(path, kLargestPictureFile)) return {};
  std::optional<DecodedPicture> decoded = DecodePictureFile(path);
  if (!decoded) return {};
  const PictureHandle handle{++last_handle_};
  pictures_[handle] = std::move(decoded->pixels);
  return {handle, decoded->natural_width * kTwipsPerPixel, decoded->natural_height * kTwipsPerPixel};
}

void Win32Icons::DestroyPicture(PictureHandle picture) { pictures_.erase(picture); }

_IMAGELIST* Win32Icons::Images(ImageListHandle list) const {
  const auto found = lists_.find(list);
  return found == lists_.end() ? nullptr : found->second;
}

const Pixels* Win32Icons::Picture(PictureHandle picture) const {
  const auto found = pictures_.find(picture);
  return found == pictures_.end() ? nullptr : &found->second;
}

}  // namespace platform::win32
