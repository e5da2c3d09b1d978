#include "platform/qt/glyph_pictures.h"

#include <QIcon>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/qt/glyphs.h"
#include "platform/qt/readable_color.h"

namespace platform::qt {
namespace {

/// By the icon naming of freedesktop.org; where a theme has no symbolic form the toolkit takes the coloured
/// one. Null for what no theme names.
const char* NameInTheme(controls::Glyph glyph) {
  using controls::Glyph;
  switch (glyph) {
    case Glyph::kNone:
      return nullptr;
    case Glyph::kCheckMark:
      return "object-select-symbolic";
    case Glyph::kLoudspeaker:
      return "audio-volume-high-symbolic";
    case Glyph::kClose:
      return "window-close-symbolic";
    case Glyph::kPaste:
      return "edit-paste-symbolic";
    case Glyph::kStart:
      return "media-playback-start-symbolic";
    case Glyph::kStop:
      return "media-playback-stop-symbolic";
    case Glyph::kRecord:
      return "media-record-symbolic";
    case Glyph::kAdd:
      return "list-add-symbolic";
    case Glyph::kDelete:
      return "edit-delete-symbolic";
    case Glyph::kSave:
      return "document-save-symbolic";
    case Glyph::kImport:
      return "document-import-symbolic";
    case Glyph::kExport:
      return "document-export-symbolic";
    case Glyph::kFind:
      return "edit-find-symbolic";
    case Glyph::kList:
      return "view-list-symbolic";
    case Glyph::kFolder:
      return "folder-open-symbolic";
  }
  return nullptr;
}

/// What can be seen of a pixel at all.
constexpr int kOpaqueEnough = 128;

template <typename Look>
void ForEachSolidPixel(const QImage& picture, Look look) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      if (color.alpha() >= kOpaqueEnough) look(color);
    }
  }
}

bool IsOfOneColor(const QImage& picture) {
  constexpr int kSame = 24;
  QColor first;
  bool one = true;
  ForEachSolidPixel(picture, [&](const QColor& color) {
    if (!first.isValid()) first = color;
    const int apart = std::max({std::abs(color.red() - first.red()), std::abs(color.green() - first.green()),
                                std::abs(color.blue() - first.blue())});
    one = one && apart <= kSame;
  });
  return one;
}

bool StandsOutFrom(const QImage& picture, const QColor& ground) {
  int solid = 0;
  int visible = 0;
  ForEachSolidPixel(picture, [&](const QColor& color) {
    ++solid;
    if (ContrastOf(color, ground) >= kContrastOfParts) ++visible;
  });
  return visible * 2 > solid;
}

bool IsEmpty(const QImage& picture) {
  int solid = 0;
  ForEachSolidPixel(picture, [&](const QColor&) { ++solid; });
  return solid == 0;
}

/// Whether a theme was chosen. The one that is always there has only the icons that programs add for
/// themselves, and looking there for each of ours holds up the window's first picture.
bool HasTheme() { return QIcon::themeName() != QLatin1String("hicolor"); }

/// A null picture when the theme has no icon that can be used.
QImage FromTheme(controls::Glyph glyph, int pixels, const GlyphColors& colors) {
  const char* const name = NameInTheme(glyph);
  if (name == nullptr || !HasTheme()) return {};
  const QIcon icon = QIcon::fromTheme(QLatin1String(name));
  if (icon.isNull()) return {};
  const QImage found =
      icon.pixmap(QSize(pixels, pixels), 1.0).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
  if (found.isNull() || IsEmpty(found)) return {};
  QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.drawImage((pixels - found.width()) / 2, (pixels - found.height()) / 2, found);
  if (IsOfOneColor(found)) {
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), colors.ink);
    return picture;
  }
  return StandsOutFrom(found, colors.ground) ? picture : QImage();
}

QImage Drawn(controls::Glyph glyph, int pixels, const QColor& ink) {
  QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  DrawGlyph(painter, glyph, picture.rect(), ink);
  return picture;
}

}  // namespace

QPixmap GlyphPicture(controls::Glyph glyph, int side, double dots, const GlyphColors& colors) {
  const int pixels = static_cast<int>(std::lround(side * dots));
  QImage picture = FromTheme(glyph, pixels, colors);
  if (picture.isNull()) picture = Drawn(glyph, pixels, colors.ink);
  picture.setDevicePixelRatio(dots);
  return QPixmap::fromImage(picture);
}

}  // namespace platform::qt
