#pragma once
// Station icons by the system's image lists, and pictures by its decoders. Not for finding their files.

#include <map>

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/drawing.h"
#include "ports/icons.h"

struct _IMAGELIST;

namespace platform::win32 {

/// Images have the size that the system's resolution asks for. Files are read with limits on bytes and
/// pixels, so that a damaged or hostile one does no harm. COM is initialised by whoever creates this.
class Win32Icons final : public Icons {
 public:
  Win32Icons();
  ~Win32Icons() override;
  Win32Icons(const Win32Icons&) = delete;
  Win32Icons& operator=(const Win32Icons&) = delete;

  ImageListHandle ImageList_Create(int width, int height, std::uint32_t flags, int initial,
                                   int grow) override;
  int ImageList_AddIcon(ImageListHandle list, IconHandle icon) override;
  bool ImageList_Destroy(ImageListHandle list) override;
  IconHandle LoadImageW(const Text& path, int width, int height) override;
  bool DestroyIcon(IconHandle icon) override;
  LoadedPicture LoadPicture(const Text& path) override;
  void DestroyPicture(PictureHandle picture) override;

  // What the windows show.

  /// Null for an unknown list.
  [[nodiscard]] _IMAGELIST* Images(ImageListHandle list) const;
  /// Null for an unknown picture; valid until it is destroyed.
  [[nodiscard]] const Pixels* Picture(PictureHandle picture) const;

 private:
  [[nodiscard]] int Device(int pixels) const;

  const unsigned int dots_;
  std::uint32_t last_handle_ = 0;  // of all three kinds; no number is used twice
  std::map<ImageListHandle, _IMAGELIST*> lists_;
  std::map<IconHandle, HICON> icons_;
  std::map<PictureHandle, Pixels> pictures_;
};

}  // namespace platform::win32
