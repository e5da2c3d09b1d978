// Feeds arbitrary files to the loading of station icons. The toolkit's decoders are not compiled for fuzzing,
// so this looks for crashes, hangs and memory, guided by this program's code and the seeds only. What must
// hold: an icon that is loaded gives one image of the list's size, and one that is refused gives none; what
// was released is gone.

#include "fuzz/platform/memory_file.h"
#include "platform/qt/icons.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using fuzz::Require;
  fuzz::NeedWindows();
  fuzz::PlainPaths paths;
  platform::qt::QtIcons icons(paths);
  const fuzz::MemoryFile file(fuzz::AsBytes(data, size));
  constexpr int kSize = 32;
  const auto list = icons.ImageList_Create(kSize, kSize, platform::kIlcColor32, 1, 0);
  const auto icon = icons.LoadImageW(file.Path(), kSize, kSize);
  const int position = icons.ImageList_AddIcon(list, icon);
  Require((position == 0) == (icon != platform::IconHandle::kNone));
  const QPixmap image = icons.Image(list, 0);
  Require(image.isNull() == (position != 0));
  Require(image.isNull() || image.size() == QSize(kSize, kSize));
  Require(icons.DestroyIcon(icon) == (icon != platform::IconHandle::kNone));
  Require(icons.ImageList_AddIcon(list, icon) == -1 && icons.ImageList_Destroy(list));
  return 0;
}
