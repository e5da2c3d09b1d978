// Feeds arbitrary files to the loading of station pictures. As with the icons, the decoders themselves are
// not compiled for fuzzing. What must hold: a picture is shown with its natural size, which is bounded, and
// kept as an image of bounded size and of that shape; one that is refused gives nothing; what was released is
// gone.

#include "fuzz/platform/memory_file.h"
#include "platform/qt/icons.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using fuzz::Require;
  constexpr int kTwipsPerPixel = 15;
  constexpr int kWidest = 20000;
  constexpr int kWidestKept = 1024;
  fuzz::NeedWindows();
  fuzz::PlainPaths paths;
  platform::qt::QtIcons icons(paths);
  const fuzz::MemoryFile file(fuzz::AsBytes(data, size));
  const platform::LoadedPicture picture = icons.LoadPicture(file.Path());
  const QImage image = icons.Picture(picture.handle);
  if (picture.handle == platform::PictureHandle::kNone) {
    Require(image.isNull() && picture.width == 0 && picture.height == 0);
    return 0;
  }
  Require(!image.isNull() && image.width() <= kWidestKept && image.height() <= kWidestKept);
  for (const int twips : {picture.width, picture.height}) {
    Require(twips >= kTwipsPerPixel && twips <= kWidest * kTwipsPerPixel && twips % kTwipsPerPixel == 0);
  }
  icons.DestroyPicture(picture.handle);
  Require(icons.Picture(picture.handle).isNull());
  return 0;
}
