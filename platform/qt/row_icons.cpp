#include "platform/qt/row_icons.h"

#include <QGuiApplication>

#include "platform/qt/initial_icon.h"
#include "platform/qt/text.h"

namespace platform::qt {

void RowIcons::SetSide(int side) {
  if (side == side_) return;
  side_ = side;
  kept_.clear();
}

QPixmap RowIcons::Of(const controls::ListView& list, const controls::ListRow& row) const {
  const QPixmap image = icons_.Image(ImageListHandle{list.ImageList()}, row.icon);
  return image.isNull() ? Drawn(row.cells[0]) : Scaled(image);
}

QPixmap RowIcons::Drawn(const Text& name) const {
  const QString text = CellText(name);
  const QString initial = InitialOf(text);
  const QColor color = IconColorOf(text);
  const QString key = color.name() + initial;
  if (const QPixmap* kept = kept_.object(key)) return *kept;
  const QPixmap drawn = DrawInitialIcon(initial, color, side_, qGuiApp->devicePixelRatio());
  kept_.insert(key, new QPixmap(drawn));
  return drawn;
}

QPixmap RowIcons::Scaled(const QPixmap& image) const {
  const double ratio = image.devicePixelRatio();
  const QSize pixels = QSize(side_, side_) * ratio;
  if (image.size() == pixels) return image;
  const QString key = QString::number(image.cacheKey());
  if (const QPixmap* kept = kept_.object(key)) return *kept;
  QPixmap scaled = image.scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  scaled.setDevicePixelRatio(ratio);
  kept_.insert(key, new QPixmap(scaled));
  return scaled;
}

}  // namespace platform::qt
