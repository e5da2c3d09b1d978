#include "platform/qt/icons.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace platform::qt {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kAllocationMegabytes = 64;
constexpr qint64 kLargestIconFile = 4 * 1024 * 1024;
constexpr qint64 kLargestPictureFile = 32 * 1024 * 1024;
constexpr int kMostImagesInIcon = 64;
constexpr int kWidestIcon = 1024;
constexpr int kWidestPicture = 20000;
// A progressive JPEG takes six bytes a pixel while it is decoded, whatever size is asked for, and passes over
// all of them once for each scan; a file of some hundred bytes can claim any number of both.
constexpr qint64 kMostPixels = qint64{32} * 1024 * 1024;
constexpr qint64 kMostPixelsInScans = 16 * kMostPixels;
// Pictures are shown in a panel; more pixels than this would only cost memory.
constexpr int kWidestKept = 1024;

/// The whole file, or nothing when it cannot be read or is larger than `most`.
std::optional<QByteArray> ReadFile(const std::string& name, qint64 most) {
  QFile file(QFile::decodeName(QByteArray::fromStdString(name)));
  if (!file.open(QIODevice::ReadOnly) || file.isSequential()) return std::nullopt;
  QByteArray bytes = file.read(most + 1);
  if (bytes.isEmpty() || bytes.size() > most) return std::nullopt;
  return bytes;
}

bool Within(QSize size, int widest) {
  return !size.isEmpty() && size.width() <= widest && size.height() <= widest;
}

/// The number of the image that serves best at `wanted`: the smallest that is large enough, else the
/// largest; -1 when there is none.
int BestImage(QImageReader& reader, QSize wanted) {
  int best = -1;
  QSize best_size;
  const int count = std::min(reader.imageCount(), kMostImagesInIcon);
  for (int number = 0; number < count; ++number) {
    if (!reader.jumpToImage(number)) continue;
    const QSize size = reader.size();
    if (!Within(size, kWidestIcon)) continue;
    const auto suffices = [&](QSize one) {
      return one.width() >= wanted.width() && one.height() >= wanted.height();
    };
    const bool smaller = size.width() < best_size.width();
    // Of images of one size the later ones have more colours, by the format's custom.
    const bool better = best < 0 || (suffices(size) && (!suffices(best_size) || smaller)) ||
                        (!suffices(best_size) && !smaller) || size == best_size;
    if (better) {
      best = number;
      best_size = size;
    }
  }
  return best;
}

QImage DecodeIcon(QByteArray bytes, QSize wanted) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, "ico");
  reader.setAutoDetectImageFormat(false);
  const int best = BestImage(reader, wanted);
  if (best < 0) return {};
  // The reader keeps its place between images, so the chosen one is read from the beginning.
  buffer.seek(0);
  QImageReader chosen(&buffer, "ico");
  chosen.setAutoDetectImageFormat(false);
  if (!chosen.jumpToImage(best)) return {};
  const QImage image = chosen.read();
  if (!Within(image.size(), kWidestIcon)) return {};
  return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

struct Decoded {
  QImage image;
  QSize natural;
};

qint64 PixelsOf(QSize size) { return qint64{size.width()} * size.height(); }

bool HasFewScans(const QByteArray& jpeg, QSize size) {
  // Between markers this pair of bytes does not occur, but in a preview it may.
  return jpeg.count(QByteArrayLiteral("\xFF\xDA")) * PixelsOf(size) <= kMostPixelsInScans;
}

QSize FittingKept(QSize size) {
  return size.scaled(kWidestKept, kWidestKept, Qt::KeepAspectRatio).expandedTo({1, 1});
}

Decoded DecodePicture(QByteArray bytes) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  const QByteArray format = reader.format();
  if (format != "jpeg" && format != "png" && format != "gif" && format != "bmp") return {};
  const QSize size = reader.size();
  if (!Within(size, kWidestPicture) || PixelsOf(size) > kMostPixels) return {};
  if (format == "jpeg" && !HasFewScans(bytes, size)) return {};
  reader.setAutoTransform(true);
  const bool turned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
  const bool is_large = !Within(size, kWidestKept);
  if (is_large) reader.setScaledSize(FittingKept(size));
  QImage image = reader.read();
  // A GIF may turn out to have another size than it says at first.
  const QSize said = turned ? size.transposed() : size;
  const QSize natural = is_large ? said : image.size();
  if (!Within(natural, kWidestPicture)) return {};
  if (!Within(image.size(), kWidestKept)) image = image.scaled(FittingKept(image.size()));
  return {std::move(image), natural};
}

}  // namespace

QtIcons::QtIcons(NativePaths& paths) : paths_(paths) {
  QImageReader::setAllocationLimit(kAllocationMegabytes);
}

ImageListHandle QtIcons::ImageList_Create(int width, int height, std::uint32_t /*flags*/, int initial,
                                          int /*grow*/) {
  const QSize size(width, height);
  if (!Within(size, kWidestIcon)) return ImageListHandle::kNone;
  const ImageListHandle handle{++last_handle_};
  constexpr int kMostReserved = 1024;
  lists_[handle].size = size;
  lists_[handle].images.reserve(static_cast<std::size_t>(std::clamp(initial, 0, kMostReserved)));
  return handle;
}

int QtIcons::ImageList_AddIcon(ImageListHandle list, IconHandle icon) {
  const auto target = lists_.find(list);
  const auto source = icons_.find(icon);
  if (target == lists_.end() || source == icons_.end()) return -1;
  const double ratio = qGuiApp->devicePixelRatio();
  const QSize pixels = (QSizeF(target->second.size) * ratio).toSize();
  QPixmap image =
      QPixmap::fromImage(source->second.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  image.setDevicePixelRatio(ratio);
  target->second.images.push_back(std::move(image));
  return static_cast<int>(target->second.images.size()) - 1;
}

bool QtIcons::ImageList_Destroy(ImageListHandle list) { return lists_.erase(list) != 0; }

IconHandle QtIcons::LoadImageW(const Text& path, int width, int height) {
  const QSize size(width, height);
  if (!Within(size, kWidestIcon)) return IconHandle::kNone;
  auto bytes = ReadFile(paths_.ToNativeForReading(path), kLargestIconFile);
  if (!bytes) return IconHandle::kNone;
  QImage image = DecodeIcon(std::move(*bytes), (QSizeF(size) * qGuiApp->devicePixelRatio()).toSize());
  if (image.isNull()) return IconHandle::kNone;
  const IconHandle handle{++last_handle_};
  icons_[handle] = std::move(image);
  return handle;
}

bool QtIcons::DestroyIcon(IconHandle icon) { return icons_.erase(icon) != 0; }

LoadedPicture QtIcons::LoadPicture(const Text& path) {
  auto bytes = ReadFile(paths_.ToNativeForReading(path), kLargestPictureFile);
  if (!bytes) return {};
  Decoded decoded = DecodePicture(std::move(*bytes));
  if (decoded.image.isNull()) return {};
  const PictureHandle handle{++last_handle_};
  pictures_[handle] = std::move(decoded.image);
  return {handle, decoded.natural.width() * kTwipsPerPixel, decoded.natural.height() * kTwipsPerPixel};
}

void QtIcons::DestroyPicture(PictureHandle picture) { pictures_.erase(picture); }

QPixmap QtIcons::Image(ImageListHandle list, int position) const {
  const auto found = lists_.find(list);
  if (found == lists_.end() || position < 0) return {};
  const auto index = static_cast<std::size_t>(position);
  return index < found->second.images.size() ? found->second.images[index] : QPixmap();
}

QImage QtIcons::Picture(PictureHandle picture) const {
  const auto found = pictures_.find(picture);
  return found == pictures_.end() ? QImage() : found->second;
}

}  // namespace platform::qt
