#pragma once
// Station icons and pictures, decoded by Qt's image readers. Not for finding their files.

#include <QImage>
#include <QPixmap>
#include <map>
#include <vector>

#include "ports/icons.h"
#include "ports/native_paths.h"

namespace platform::qt {

/// Files are read with limits on bytes and pixels, so that a damaged or hostile one does no harm.
class QtIcons final : public Icons {
 public:
  explicit QtIcons(NativePaths& paths);

  ImageListHandle ImageList_Create(int width, int height, std::uint32_t flags, int initial,
                                   int grow) override;
  int ImageList_AddIcon(ImageListHandle list, IconHandle icon) override;
  bool ImageList_Destroy(ImageListHandle list) override;
  IconHandle LoadImageW(const Text& path, int width, int height) override;
  bool DestroyIcon(IconHandle icon) override;
  LoadedPicture LoadPicture(const Text& path) override;
  void DestroyPicture(PictureHandle picture) override;

  // What the widgets show: null images for what does not exist.

  [[nodiscard]] QPixmap Image(ImageListHandle list, int position) const;
  [[nodiscard]] QImage Picture(PictureHandle picture) const;

 private:
  struct ImageList {
    QSize size;
    std::vector<QPixmap> images;
  };

  NativePaths& paths_;
  std::uint32_t last_handle_ = 0;  // of all three kinds; no number is used twice
  std::map<ImageListHandle, ImageList> lists_;
  std::map<IconHandle, QImage> icons_;
  std::map<PictureHandle, QImage> pictures_;
};

}  // namespace platform::qt
