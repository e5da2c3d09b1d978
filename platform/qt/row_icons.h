#pragma once
// The icons of a list's rows in the size of the list: from its image list, or drawn. Not the image list.

#include <QCache>
#include <QPixmap>
#include <QString>

#include "controls/list_view.h"
#include "platform/qt/icons.h"

namespace platform::qt {

/// Icons are made when a row is painted. The last ones are kept, so that scrolling a list makes few, and a
/// list of any length keeps few.
class RowIcons {
 public:
  static constexpr int kMostKept = 512;

  explicit RowIcons(const QtIcons& icons) : icons_(icons), kept_(kMostKept) {}

  /// Icons are squares with this many device-independent pixels, 32 at first.
  void SetSide(int side);

  [[nodiscard]] QPixmap Of(const controls::ListView& list, const controls::ListRow& row) const;
  [[nodiscard]] int Kept() const { return static_cast<int>(kept_.size()); }

 private:
  [[nodiscard]] QPixmap Drawn(const Text& name) const;
  [[nodiscard]] QPixmap Scaled(const QPixmap& image) const;

  const QtIcons& icons_;
  int side_ = 32;
  mutable QCache<QString, QPixmap> kept_;
};

}  // namespace platform::qt
