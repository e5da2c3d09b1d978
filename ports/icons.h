#pragma once
// Port: station icons and station pictures. Not for finding their files.

#include <cstdint>

#include "ports/text.h"

namespace platform {

/// A list of equally sized images, an icon, a picture; zero is none.
enum class ImageListHandle : std::uint32_t { kNone = 0 };
enum class IconHandle : std::uint32_t { kNone = 0 };
enum class PictureHandle : std::uint32_t { kNone = 0 };

inline constexpr std::uint32_t kIlcMask = 0x0001;     ///< ILC_MASK
inline constexpr std::uint32_t kIlcColor32 = 0x0020;  ///< ILC_COLOR32

/// A decoded picture and its natural size in twips (15 to a pixel at 100 %).
struct LoadedPicture {
  PictureHandle handle = PictureHandle::kNone;
  int width = 0;
  int height = 0;
};

/// Whoever receives a handle releases it exactly once.
class Icons {
 public:
  virtual ~Icons() = default;

  /// An empty list for images of `width` x `height` pixels. `initial` and `grow` are hints.
  virtual ImageListHandle ImageList_Create(int width, int height, std::uint32_t flags, int initial,
                                           int grow) = 0;
  /// The position of the added image, counted from 0; -1 on failure. The icon stays the caller's.
  virtual int ImageList_AddIcon(ImageListHandle list, IconHandle icon) = 0;
  virtual bool ImageList_Destroy(ImageListHandle list) = 0;

  /// Loads an .ico file at `width` x `height` pixels; kNone when the file is not an icon.
  virtual IconHandle LoadImageW(const Text& path, int width, int height) = 0;
  virtual bool DestroyIcon(IconHandle icon) = 0;

  /// Decodes a picture file. The handle is kNone when the file cannot be read as a picture.
  virtual LoadedPicture LoadPicture(const Text& path) = 0;
  virtual void DestroyPicture(PictureHandle picture) = 0;
};

}  // namespace platform
